#pragma once

// Everything public of the serialization library in one include.
#include <ZelvorSerialization/DataStream.h>
#include <ZelvorSerialization/Export.h>
#include <ZelvorSerialization/MemoryDataStream.h>
