#pragma once

// Everything public of the data-type library in one include, the base library's
// umbrella with it.
#include <ZelvorBase/ZelvorBase.h>
#include <ZelvorDataType/BigDecimal.h>
#include <ZelvorDataType/BigInt.h>
#include <ZelvorDataType/Binary.h>
#include <ZelvorDataType/BinaryCollection.h>
#include <ZelvorDataType/CellFmtData.h>
#include <ZelvorDataType/Chrono.h>
#include <ZelvorDataType/DateTime.h>
#include <ZelvorDataType/DynamicTime.h>
#include <ZelvorDataType/Export.h>
#include <ZelvorDataType/ReferenceCountedObjectCollection.h>
#include <ZelvorDataType/ScheduleBuilder.h>
#include <ZelvorDataType/SchedulePoints.h>
#include <ZelvorDataType/StringCollection.h>
#include <ZelvorDataType/Text.h>
#include <ZelvorDataType/TimeSeries.h>
#include <ZelvorDataType/TimeSeriesImpl.h>
#include <ZelvorDataType/TimeSpan.h>
#include <ZelvorDataType/Variant.h>
#include <ZelvorDataType/WideText.h>
#include <ZelvorDataType/ZelvorTime.h>
