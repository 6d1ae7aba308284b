#pragma once

#include <ZelvorSerialization/Export.h>

namespace ZelvorDataType {
class DateTime;
class DynamicTime;
}  // namespace ZelvorDataType

namespace ZelvorSerialization {

// A sink of typed values. Each operation returns 0 on success and a non-zero code on
// failure; what a failure leaves in the stream is the implementation's affair.
// Header-only, so that value types can save themselves without a link dependency on
// any implementation.
class ZELVOR_SERIALIZATION_API WriteDataStream {
  public:
    virtual ~WriteDataStream() = default;
    virtual int WriteInt(int value) = 0;
    virtual int WriteDateTime(const ZelvorDataType::DateTime& value) = 0;
    virtual int WriteDynamicTime(const ZelvorDataType::DynamicTime& value) = 0;
};

// A source of typed values, read in the order they were written. Each operation
// returns 0 on success; on failure it returns non-zero and should leave its output
// untouched.
class ZELVOR_SERIALIZATION_API ReadDataStream {
  public:
    virtual ~ReadDataStream() = default;
    virtual int ReadInt(int* value) = 0;
    virtual int ReadDateTime(ZelvorDataType::DateTime& value) = 0;
    virtual int ReadDynamicTime(ZelvorDataType::DynamicTime& value) = 0;
};

}  // namespace ZelvorSerialization
