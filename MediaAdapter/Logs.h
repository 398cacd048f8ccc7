// SPDX-License-Identifier: MIT
// What the helper can say about itself: silent unless Qt's own QT_LOGGING_RULES switch it on, as in
// "veslora.media=true". No line ever holds what plays. Any thread.
#pragma once

#include <QLoggingCategory>

namespace veslora::Logs {

Q_DECLARE_LOGGING_CATEGORY(media)

} // namespace veslora::Logs
