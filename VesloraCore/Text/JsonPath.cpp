// SPDX-License-Identifier: MIT
// See JsonPath.h.
#include "VesloraCore/Text/JsonPath.h"

#include "VesloraCore/Text/JsonScanner.h"
#include "VesloraCore/Text/JsonText.h"

namespace veslora::JsonPath {

namespace {

std::optional<std::string> textOf(std::string_view value) {
    if (value.starts_with('"')) {
        return JsonText::unescape(value.substr(1, value.size() - 2)).text;
    }
    const bool isContainer = value.starts_with('{') || value.starts_with('[');
    return isContainer || value == "null" ? std::nullopt : std::optional<std::string>(value);
}

// Steps over the next value and finds what `path` leads to inside it. Of equal keys the last counts, also
// when the path ends there.
std::optional<std::string> find(JsonScanner& scanner, std::string_view path) {
    std::optional<std::string> found;
    scanner.object([&](JsonScanner::Key key) {
        const std::string name = JsonText::unescape(key.raw()).text;
        if (path == name) {
            found = textOf(scanner.raw());
        } else if (path.starts_with(name) && path[name.size()] == '.') {
            found = find(scanner, path.substr(name.size() + 1));
        } else {
            scanner.skip();
        }
    });
    return found;
}

} // namespace

std::optional<std::string> valueAt(std::string_view document, std::string_view path) {
    JsonScanner scanner(document);
    std::optional<std::string> found = find(scanner, path);
    return scanner.isComplete() ? found : std::nullopt;
}

} // namespace veslora::JsonPath
