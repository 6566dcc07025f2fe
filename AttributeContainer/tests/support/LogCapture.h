// Collects the log's messages for tests of what is logged.
#pragma once

#include "CapturedLog.h"

namespace QOR::AttributeContainer::Testing {

using LogCapture = QOR::Testing::CapturedLog;

}  // namespace QOR::AttributeContainer::Testing
