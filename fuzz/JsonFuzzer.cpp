// SPDX-License-Identifier: MIT
// `Json` reads exactly the UTF-8 documents that `JsonScanner` takes; what it read can be printed and read
// again as the same value. Seeds: agents/claude/hooks/*.json agents/claude/sessions/*.json
// agents/claude/statusline/*.json
#include "VesloraCore/Text/Json.h"
#include "VesloraCore/Text/JsonScanner.h"
#include "VesloraCore/Text/Utf8.h"
#include "fuzz/Fuzzing.h"

using namespace veslora;
using fuzz::require;

namespace {

bool isScanned(std::string_view text) {
    JsonScanner scanner(text);
    scanner.skip();
    return scanner.isComplete() && Utf8::isValid(text);
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text = fuzz::textOf(data, size);
    const auto lossless = Json::parse(text, Json::Reading::lossless);
    const auto value = Json::parse(text);
    require(value.has_value() == isScanned(text));
    require(!lossless || lossless == value);
    if (!value) {
        return 0;
    }
    for (const auto layout : {Json::Layout::compact, Json::Layout::pretty}) {
        const std::string printed = value->print(layout);
        const auto again = Json::parse(printed, Json::Reading::lossless);
        require(again == value);
        require(again->print(layout) == printed);
    }
    static_cast<void>(value->number());
    static_cast<void>(value->integer());
    static_cast<void>(value->integer32());
    return 0;
}
