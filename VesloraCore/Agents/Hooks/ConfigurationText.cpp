// SPDX-License-Identifier: MIT
// See ConfigurationText.h.
#include "VesloraCore/Agents/Hooks/ConfigurationText.h"

#include "VesloraCore/Text/JsonText.h"

namespace veslora::ConfigurationText {

std::optional<Json> parse(std::optional<std::string_view> text) {
    const std::string_view document = JsonText::withoutByteOrderMark(text.value_or(""));
    if (document.find_first_not_of(" \t\r\n\v\f") == std::string_view::npos) {
        return Json::makeObject();
    }
    std::optional<Json> root = Json::parse(document, Json::Reading::lossless);
    return root && root->isObject() ? std::move(root) : std::nullopt;
}

Json parseOrThrow(std::optional<std::string_view> text) {
    using ClaudeHooksInstaller::InstallError;
    std::optional<Json> root = parse(text);
    if (!root) {
        throw InstallError(InstallError::Reason::notAnObject);
    }
    return std::move(*root);
}

std::string render(const Json& object) {
    return object.print(Json::Layout::pretty) + "\n";
}

} // namespace veslora::ConfigurationText
