// SPDX-License-Identifier: MIT
#include "VesloraCore/Agents/ApprovalAlert.h"

#include "VesloraCore/Agents/ClaudePermissions.h"

namespace veslora {

std::string AlertNotice::message(std::string_view message, const Words& words) {
    // All that newer versions say; older ones named the tool.
    if (message == "Claude needs your permission") {
        return words.translate("AgentMessages", "Needs your permission");
    }
    if (message == waitingForYou) {
        return words.translate("AgentMessages", waitingForYou);
    }
    for (const std::string_view before :
         {std::string_view("Claude needs your permission to use "), wantsToUse}) {
        if (message.starts_with(before)) {
            return Words::filled(words.translate("AgentMessages", "Wants to use %1"),
                                 {message.substr(before.size())});
        }
    }
    return std::string(message);
}

double ApprovalAlert::fuseProgress(double answerBy, double now) {
    const double left = answerBy - now;
    if (!(left > 0)) {
        return 0;
    }
    return left < ClaudePermissions::wait ? left / ClaudePermissions::wait : 1;
}

} // namespace veslora
