#pragma once

// Everything public of the base library in one include.
#include <ZelvorBase/Buffer.h>
#include <ZelvorBase/Export.h>
#include <ZelvorBase/Guid.h>
#include <ZelvorBase/Message.h>
#include <ZelvorBase/ReferenceCounted.h>
#include <ZelvorBase/ReturnString.h>
