// SPDX-License-Identifier: MIT
// Reading a document: `JsonScanner` checks it and finds its tokens, and the values are built here.
#include "VesloraCore/Text/Json.h"
#include "VesloraCore/Text/JsonScanner.h"
#include "VesloraCore/Text/JsonText.h"
#include "VesloraCore/Text/Utf8.h"

#include <algorithm>

namespace veslora {

class JsonReader {
  public:
    explicit JsonReader(std::string_view document) : m_scanner(document) {}

    /// The whole document; nothing for a broken one.
    std::optional<Json> read(Json::Reading reading);

  private:
    void readValue(Json& out);
    void readMembers(Json::Object& members);
    void readScalar(Json& out);
    std::string unescaped(std::string_view raw);

    JsonScanner m_scanner;
    bool m_isLossless = true; ///< printing the values would give back all that was read so far
};

std::optional<Json> JsonReader::read(Json::Reading reading) {
    Json value;
    readValue(value);
    const bool isAccepted = m_scanner.isComplete() && (m_isLossless || reading == Json::Reading::lenient);
    return isAccepted ? std::optional(std::move(value)) : std::nullopt;
}

// After a broken value `out` holds anything: the whole document is refused then.
void JsonReader::readValue(Json& out) {
    switch (m_scanner.next()) {
    case JsonScanner::Kind::object:
        readMembers(out.m_value.emplace<Json::Object>());
        break;
    case JsonScanner::Kind::array: {
        Json::Array& items = out.m_value.emplace<Json::Array>();
        m_scanner.array([&] { readValue(items.emplace_back()); });
        break;
    }
    case JsonScanner::Kind::string: {
        const std::string_view quoted = m_scanner.raw();
        out.m_value = quoted.empty() ? std::string() : unescaped(quoted.substr(1, quoted.size() - 2));
        break;
    }
    case JsonScanner::Kind::scalar:
        readScalar(out);
        break;
    }
}

// Sorts by key and keeps the last of equal keys.
void JsonReader::readMembers(Json::Object& members) {
    m_scanner.object([&](JsonScanner::Key key) {
        Json::Member& member = members.emplace_back();
        member.key = unescaped(key.raw());
        readValue(member.value);
    });
    const auto byKey = [](const Json::Member& a, const Json::Member& b) { return a.key < b.key; };
    std::ranges::stable_sort(members, byKey);
    const auto sameKey = [](const Json::Member& a, const Json::Member& b) { return a.key == b.key; };
    const auto unique = std::unique(members.rbegin(), members.rend(), sameKey);
    if (unique != members.rend()) {
        members.erase(members.begin(), unique.base());
        m_isLossless = false;
    }
}

void JsonReader::readScalar(Json& out) {
    const std::string_view token = m_scanner.raw();
    if (token == "true" || token == "false") {
        out.m_value = token == "true";
    } else if (token != "null") {
        out.m_value = Json::Number{std::string(token)};
    }
}

std::string JsonReader::unescaped(std::string_view raw) {
    JsonText::Unescaped content = JsonText::unescape(raw);
    m_isLossless = m_isLossless && content.isExact;
    return std::move(content.text);
}

std::optional<Json> Json::parse(std::string_view text, Reading reading) {
    return Utf8::isValid(text) ? JsonReader(text).read(reading) : std::nullopt;
}

} // namespace veslora
