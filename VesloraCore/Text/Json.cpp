// SPDX-License-Identifier: MIT
// Access to the values and their editing. Reading and printing are in JsonReader.cpp and JsonPrint.cpp.
#include "VesloraCore/Text/Json.h"

#include "VesloraCore/Text/JsonText.h"

#include <algorithm>
#include <limits>

namespace veslora {

namespace {

// Members are kept sorted, so a key is found by halving.
template <class Members>
auto placeOf(Members& members, std::string_view key) {
    return std::lower_bound(
        members.begin(), members.end(), key,
        [](const Json::Member& member, std::string_view wanted) { return member.key.compare(wanted) < 0; });
}

template <class Members>
auto valueOf(Members* members, std::string_view key) -> decltype(&members->front().value) {
    if (!members) {
        return nullptr;
    }
    auto place = placeOf(*members, key);
    return place != members->end() && place->key == key ? &place->value : nullptr;
}

} // namespace

Json Json::makeBoolean(bool value) {
    Json made;
    made.m_value = value;
    return made;
}

Json Json::makeInteger(std::int64_t value) {
    Json made;
    made.m_value = Number{std::to_string(value)};
    return made;
}

Json Json::makeString(std::string text) {
    Json made;
    made.m_value = std::move(text);
    return made;
}

Json Json::makeArray() {
    return makeArray(Array{});
}

Json Json::makeArray(Array items) {
    Json made;
    made.m_value = std::move(items);
    return made;
}

Json Json::makeObject() {
    Json made;
    made.m_value = Object{};
    return made;
}

std::optional<bool> Json::boolean() const {
    const bool* held = std::get_if<bool>(&m_value);
    return held ? std::optional(*held) : std::nullopt;
}

const std::string* Json::numberText() const {
    const Number* held = std::get_if<Number>(&m_value);
    return held ? &held->text : nullptr;
}

std::optional<double> Json::number() const {
    const std::string* text = numberText();
    return text ? JsonText::number(*text) : std::nullopt;
}

std::optional<std::int64_t> Json::integer() const {
    const std::string* text = numberText();
    return text ? JsonText::integer(*text) : std::nullopt;
}

std::optional<std::int32_t> Json::integer32() const {
    const std::optional<std::int64_t> value = integer();
    using Limits = std::numeric_limits<std::int32_t>;
    if (!value || *value < Limits::min() || *value > Limits::max()) {
        return std::nullopt;
    }
    return static_cast<std::int32_t>(*value);
}

const Json::Array& Json::items() const {
    static const Array none;
    const Array* held = std::get_if<Array>(&m_value);
    return held ? *held : none;
}

const Json::Object& Json::members() const {
    static const Object none;
    const Object* held = std::get_if<Object>(&m_value);
    return held ? *held : none;
}

const Json* Json::find(std::string_view key) const {
    return valueOf(std::get_if<Object>(&m_value), key);
}

Json* Json::find(std::string_view key) {
    return valueOf(std::get_if<Object>(&m_value), key);
}

const std::string* Json::stringAt(std::string_view key) const {
    const Json* value = find(key);
    return value ? value->string() : nullptr;
}

std::string Json::textAt(std::string_view key) const {
    const std::string* text = stringAt(key);
    return text ? *text : std::string();
}

const Json* Json::objectAt(std::string_view key) const {
    const Json* value = find(key);
    return value && value->isObject() ? value : nullptr;
}

void Json::set(std::string_view key, Json value) {
    if (!isObject()) {
        m_value = Object{};
    }
    auto& members = std::get<Object>(m_value);
    auto place = placeOf(members, key);
    if (place != members.end() && place->key == key) {
        place->value = std::move(value);
    } else {
        members.insert(place, Member{std::string(key), std::move(value)});
    }
}

void Json::remove(std::string_view key) {
    if (auto* members = std::get_if<Object>(&m_value)) {
        std::erase_if(*members, [&](const Member& member) { return member.key == key; });
    }
}

void Json::append(Json value) {
    if (!isArray()) {
        m_value = Array{};
    }
    std::get<Array>(m_value).push_back(std::move(value));
}

} // namespace veslora
