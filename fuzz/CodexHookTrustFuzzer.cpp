// SPDX-License-Identifier: MIT
// Codex's hooks.json, beside its config.toml after the first null byte, and what a permission script printed.
#include "VesloraCore/Agents/HookTrial.h"
#include "VesloraCore/Agents/Hooks/CodexHookTrust.h"
#include "fuzz/Fuzzing.h"

#include <string>
#include <vector>

using namespace veslora;
using fuzz::require;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text = fuzz::textOf(data, size);
    const std::size_t cut = text.find('\0');
    const std::string_view hooks = text.substr(0, cut);
    const std::string_view trust = cut == std::string_view::npos ? std::string_view() : text.substr(cut + 1);
    const std::string path = "/home/me/.codex/hooks.json";
    const auto places = CodexHookTrust::placesOf(hooks, {"ours", "asks"});
    std::string all;
    for (const std::string& place : places) {
        all += "\"" + path + ":" + place + "\"\n";
    }
    require(CodexHookTrust::namesAll(all, path, places));
    require(CodexHookTrust::namesAll(trust, path, {}));
    static_cast<void>(CodexHookTrust::namesAll(trust, path, places));
    static_cast<void>(HookTrial::decisionOf(text));
    return 0;
}
