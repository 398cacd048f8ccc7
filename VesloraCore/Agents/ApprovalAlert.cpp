// SPDX-License-Identifier: MIT
#include "VesloraCore/Agents/ApprovalAlert.h"

#include "VesloraCore/Agents/ClaudePermissions.h"

namespace veslora {

std::string AlertNotice::message(std::string_view message) {
    // All that newer versions say; older ones named the tool.
    if (message == "Claude needs your permission") {
        return "Needs your permission";
    }
    constexpr std::string_view wordy = "Claude needs your permission to use ";
    if (!message.starts_with(wordy)) {
        return std::string(message);
    }
    return std::string("Wants to use ").append(message.substr(wordy.size()));
}

double ApprovalAlert::fuseProgress(double answerBy, double now) {
    const double left = answerBy - now;
    if (!(left > 0)) {
        return 0;
    }
    return left < ClaudePermissions::wait ? left / ClaudePermissions::wait : 1;
}

} // namespace veslora
