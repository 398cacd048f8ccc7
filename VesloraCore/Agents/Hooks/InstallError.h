// SPDX-License-Identifier: MIT
// Why an agent's configuration was left alone. Thrown by the installers, shown by the settings window.
#pragma once

#include <exception>

namespace veslora::ClaudeHooksInstaller {

struct InstallError : std::exception {
    enum class Reason {
        notAnObject ///< the text is no JSON object, or none that could be written back without a loss
    };
    explicit InstallError(Reason why) : reason(why) {}
    [[nodiscard]] const char* what() const noexcept override {
        return "the configuration is not a JSON object";
    }

    Reason reason;
};

} // namespace veslora::ClaudeHooksInstaller
