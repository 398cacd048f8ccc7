// SPDX-License-Identifier: MIT
// Lines of transcripts: what the scanner takes of them is what the parser finds in them.
// Seeds: agents/claude/transcripts/*.jsonl
#include "VesloraCore/Agents/Usage/ClaudeUsageTally.h"
#include "VesloraCore/Text/Iso8601.h"
#include "VesloraCore/Text/Json.h"
#include "VesloraCore/Text/JsonScanner.h"
#include "VesloraCore/Text/Utf8.h"
#include "fuzz/Fuzzing.h"

using namespace veslora;
using fuzz::require;

namespace {

std::int64_t count(const Json& usage, std::string_view key) {
    const Json* value = usage.find(key);
    if (!value) {
        return 0;
    }
    return value->boolean() ? std::int64_t{*value->boolean()} : value->integer().value_or(0);
}

std::optional<ClaudeUsageLine> parsedWhole(std::string_view text) {
    const auto line = text.find(ClaudeUsageLine::marker) == text.npos ? std::nullopt : Json::parse(text);
    const Json* message = line ? line->objectAt("message") : nullptr;
    const Json* usage = message ? message->objectAt("usage") : nullptr;
    if (!usage || line->textAt("type") != "assistant" || !line->stringAt("timestamp")) {
        return std::nullopt;
    }
    const auto time = Iso8601::parse(line->textAt("timestamp"));
    if (!time || (!message->stringAt("id") && !line->stringAt("uuid"))) {
        return std::nullopt;
    }
    const std::string key = message->stringAt("id") ? message->textAt("id") + "|" + line->textAt("requestId")
                                                    : line->textAt("uuid");
    return ClaudeUsageLine{key,
                           {count(*usage, "input_tokens"), count(*usage, "output_tokens"),
                            count(*usage, "cache_creation_input_tokens"),
                            count(*usage, "cache_read_input_tokens")},
                           *time};
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view rest = fuzz::textOf(data, size);
    while (!rest.empty()) {
        const std::string_view bytes = fuzz::takeLine(rest);
        const std::string repaired = Utf8::isValid(bytes) ? std::string(bytes) : Utf8::repaired(bytes);
        require(Utf8::isValid(repaired));
        JsonScanner scanner(repaired);
        scanner.skip();
        require(scanner.isComplete() == Json::parse(repaired).has_value());
        require(ClaudeUsageLine::parse(repaired) == parsedWhole(repaired));
    }
    return 0;
}
