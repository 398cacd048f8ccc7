// SPDX-License-Identifier: MIT
// Reading a document. simdjson's On-Demand front finds the tokens and checks UTF-8 and structure; what the
// tokens say is checked here, because it reads only what it is asked for, and refuses lone surrogates, which
// text that an agent cut off brings.
#include "VesloraCore/Text/Json.h"
#include "VesloraCore/Text/JsonText.h"

#include <simdjson.h>

#include <algorithm>

namespace veslora {

namespace ondemand = simdjson::ondemand;

class JsonReader {
  public:
    /// `document` must stay, with simdjson's padding behind it, for as long as the reader works.
    JsonReader(std::string_view document, Json::Reading reading) : m_document(document), m_reading(reading) {}

    bool read(ondemand::value value, int depth, Json& out);

  private:
    bool readArray(ondemand::value value, int depth, Json& out);
    bool readObject(ondemand::value value, int depth, Json& out);
    bool readKey(ondemand::field& field, std::string& key);
    bool readScalar(std::string_view token, Json& out);
    bool readText(std::string_view raw, std::string& out);
    bool sortMembers(Json::Object& members) const;

    std::string_view m_document;
    Json::Reading m_reading;
};

bool JsonReader::read(ondemand::value value, int depth, Json& out) {
    ondemand::json_type type{};
    if (value.type().get(type)) {
        return false;
    }
    if (type == ondemand::json_type::array) {
        return depth < Json::depthLimit && readArray(value, depth + 1, out);
    }
    if (type == ondemand::json_type::object) {
        return depth < Json::depthLimit && readObject(value, depth + 1, out);
    }
    const std::string_view token = JsonText::withoutTrailingBlanks(value.raw_json_token());
    // A string must be taken out: one that is passed over counts as a key where a colon follows it.
    ondemand::raw_json_string taken;
    if (type == ondemand::json_type::string && value.get_raw_json_string().get(taken)) {
        return false;
    }
    return readScalar(token, out);
}

bool JsonReader::readArray(ondemand::value value, int depth, Json& out) {
    ondemand::array array;
    if (value.get_array().get(array)) {
        return false;
    }
    Json::Array items;
    for (auto item : array) {
        ondemand::value inner;
        if (item.get(inner) || !read(inner, depth, items.emplace_back())) {
            return false;
        }
    }
    out.m_value = std::move(items);
    return true;
}

bool JsonReader::readObject(ondemand::value value, int depth, Json& out) {
    ondemand::object object;
    if (value.get_object().get(object)) {
        return false;
    }
    Json::Object members;
    for (auto each : object) {
        ondemand::field field;
        Json::Member& member = members.emplace_back();
        if (std::move(each).get(field) || !readKey(field, member.key) ||
            !read(field.value(), depth, member.value)) {
            return false;
        }
    }
    if (!sortMembers(members)) {
        return false;
    }
    out.m_value = std::move(members);
    return true;
}

bool JsonReader::readKey(ondemand::field& field, std::string& key) {
    const auto start = static_cast<std::size_t>(field.key().raw() - m_document.data());
    const std::size_t end = JsonText::closingQuote(m_document, start);
    return end != std::string_view::npos && readText(m_document.substr(start, end - start), key);
}

bool JsonReader::readScalar(std::string_view token, Json& out) {
    if (token == "null") {
        return true;
    }
    if (token == "true" || token == "false") {
        out.m_value = token == "true";
        return true;
    }
    if (token.starts_with('"')) {
        std::string& text = out.m_value.emplace<std::string>();
        const std::size_t end = JsonText::closingQuote(token, 1);
        return end == token.size() - 1 && readText(token.substr(1, end - 1), text);
    }
    if (!JsonText::isNumber(token)) {
        return false;
    }
    out.m_value = Json::Number{std::string(token)};
    return true;
}

bool JsonReader::readText(std::string_view raw, std::string& out) {
    std::optional<JsonText::Unescaped> unescaped = JsonText::unescape(raw);
    if (!unescaped || (!unescaped->isExact && m_reading == Json::Reading::lossless)) {
        return false;
    }
    out = std::move(unescaped->text);
    return true;
}

// Sorts by key and leaves the last of equal keys; false when there were some and nothing may be lost.
bool JsonReader::sortMembers(Json::Object& members) const {
    const auto byKey = [](const Json::Member& a, const Json::Member& b) { return a.key < b.key; };
    std::stable_sort(members.begin(), members.end(), byKey);
    const auto sameKey = [](const Json::Member& a, const Json::Member& b) { return a.key == b.key; };
    if (std::adjacent_find(members.begin(), members.end(), sameKey) == members.end()) {
        return true;
    }
    if (m_reading == Json::Reading::lossless) {
        return false;
    }
    const auto end = std::unique(members.rbegin(), members.rend(), sameKey);
    members.erase(members.begin(), end.base());
    return true;
}

namespace {

// A document that is one bare value is none to On-Demand, and so each one is read as the only item of an
// array.
std::string wrapped(std::string_view text) {
    std::string document;
    document.reserve(text.size() + 2 + simdjson::SIMDJSON_PADDING);
    document.append("[").append(text).append("]");
    return document;
}

} // namespace

std::optional<Json> Json::parse(std::string_view text, Reading reading) {
    const std::string document = wrapped(JsonText::withoutByteOrderMark(text));
    ondemand::parser parser;
    ondemand::document tokens;
    ondemand::array root;
    if (parser.iterate(document.data(), document.size(), document.capacity()).get(tokens) ||
        tokens.get_array().get(root)) {
        return std::nullopt;
    }
    JsonReader reader(document, reading);
    Json result;
    int count = 0;
    for (auto item : root) {
        ondemand::value value;
        if (item.get(value) || ++count > 1 || !reader.read(value, 0, result)) {
            return std::nullopt;
        }
    }
    const bool isAtEnd = tokens.current_location().error() == simdjson::OUT_OF_BOUNDS;
    return count == 1 && isAtEnd ? std::optional(std::move(result)) : std::nullopt;
}

} // namespace veslora
