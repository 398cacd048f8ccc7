// SPDX-License-Identifier: MIT
// The search for one value agrees with the reader of whole documents. The first line of the input is the
// path. Seeds: agents/claude/statusline/*.json
#include "VesloraCore/Text/Json.h"
#include "VesloraCore/Text/JsonPath.h"
#include "VesloraCore/Text/Utf8.h"
#include "fuzz/Fuzzing.h"

#include <algorithm>

using namespace veslora;

namespace {

const Json* find(const Json& document, std::string_view path) {
    const Json* value = &document;
    while (value != nullptr) {
        const std::size_t dot = path.find('.');
        value = value->find(path.substr(0, dot));
        if (dot == std::string_view::npos) {
            break;
        }
        path.remove_prefix(dot + 1);
    }
    return value;
}

std::optional<std::string> textOf(const Json* value) {
    if (value == nullptr) {
        return std::nullopt;
    }
    if (const std::string* text = value->string()) {
        return *text;
    }
    if (const std::string* number = value->numberText()) {
        return *number;
    }
    if (const auto truth = value->boolean()) {
        return *truth ? "true" : "false";
    }
    return std::nullopt;
}

/// A path names its keys by the dots between them, so a key that contains a dot can be meant in two ways.
bool isPlain(std::string_view key) {
    return key.find('.') == std::string_view::npos;
}

bool hasPlainKeys(const Json& value) {
    const auto& items = value.items();
    const auto& members = value.members();
    return std::ranges::all_of(items, hasPlainKeys) &&
           std::ranges::all_of(members, [](const Json::Member& member) {
               return isPlain(member.key) && hasPlainKeys(member.value);
           });
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view document = fuzz::textOf(data, size);
    const std::string_view path = fuzz::takeLine(document);
    const auto found = JsonPath::valueAt(document, path);
    const auto whole = Json::parse(document);
    if (whole && hasPlainKeys(*whole)) {
        fuzz::require(found == textOf(find(*whole, path)));
    }
    // Only `Json` asks for valid UTF-8.
    fuzz::require(!found || whole || !Utf8::isValid(document));
    return 0;
}
