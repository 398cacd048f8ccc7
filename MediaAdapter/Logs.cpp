// SPDX-License-Identifier: MIT
#include "MediaAdapter/Logs.h"

namespace veslora::Logs {

// From this level on a line is printed unasked: only for faults of the program itself.
Q_LOGGING_CATEGORY(media, "veslora.media", QtCriticalMsg)

} // namespace veslora::Logs
