// SPDX-License-Identifier: MIT
#include "VesloraCore/ApprovalAlert.h"

namespace veslora {

std::string AlertNotice::message(std::string_view message) {
    // All that newer versions say; older ones named the tool.
    if (message == "Claude needs your permission")
        return "Needs your permission";
    constexpr std::string_view wordy = "Claude needs your permission to use ";
    if (!message.starts_with(wordy))
        return std::string(message);
    return std::string("Wants to use ").append(message.substr(wordy.size()));
}

bool ApprovalAlert::isArmed(Timestamp shownAt, Timestamp now) {
    return now - shownAt >= armingDelay;
}

double ApprovalAlert::fuseProgress(Timestamp receivedAt, Timestamp now) {
    const double left = receivedAt + answerWindow - now;
    if (!(left > 0))
        return 0;
    return left < answerWindow ? left / answerWindow : 1;
}

} // namespace veslora
