// SPDX-License-Identifier: MIT
// One JSON value, as read from another program's file or as it is written back. Numbers keep the text they
// had, so that 1.0, 1e400 and integers of thirty digits survive being read and printed. Plain values, any
// thread.
#pragma once

#include "VesloraCore/Text/JsonScanner.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace veslora {

class Json {
  public:
    struct Member;
    using Array = std::vector<Json>;
    using Object = std::vector<Member>;

    /// What reading may lose of a document.
    enum class Reading {
        lenient, ///< of several equal keys the last counts, half a surrogate pair becomes U+FFFD
        lossless ///< a document with either is refused, since printing its value would not restore it
    };
    enum class Layout {
        compact, ///< one line without whitespace between its tokens
        pretty   ///< two spaces a level and one on each side of a colon
    };

    /// Containers may nest this deep; a deeper document is refused.
    static constexpr int depthLimit = JsonScanner::depthLimit;

    /// Null.
    Json() = default;

    static Json makeBoolean(bool value);
    static Json makeInteger(std::int64_t value);
    /// `text` must be valid UTF-8.
    static Json makeString(std::string text);
    static Json makeArray();
    static Json makeArray(std::vector<Json> items);
    static Json makeObject();

    /// Reads a whole document of any type, also a bare string or number, by `JsonScanner`'s grammar; a byte
    /// order mark before it is dropped. Nothing for empty text, invalid UTF-8, a syntax error, anything after
    /// the value, or too deep nesting.
    [[nodiscard]] static std::optional<Json> parse(std::string_view text, Reading reading = Reading::lenient);

    /// UTF-8 without a final newline; keys in the order of their bytes, slashes and letters beyond ASCII as
    /// they are.
    [[nodiscard]] std::string print(Layout layout) const;

    [[nodiscard]] bool isNull() const { return std::holds_alternative<Null>(m_value); }
    [[nodiscard]] bool isNumber() const { return std::holds_alternative<Number>(m_value); }
    [[nodiscard]] bool isArray() const { return std::holds_alternative<Array>(m_value); }
    [[nodiscard]] bool isObject() const { return std::holds_alternative<Object>(m_value); }

    [[nodiscard]] std::optional<bool> boolean() const;
    /// Null where this is no string.
    [[nodiscard]] const std::string* string() const { return std::get_if<std::string>(&m_value); }
    /// A number's own text, as in the document; null where this is no number.
    [[nodiscard]] const std::string* numberText() const;
    /// Absent for anything but a number, booleans included, and for one that a double can't hold.
    [[nodiscard]] std::optional<double> number() const;
    /// A number without its fraction. Absent like `number`, and also beyond 64 bits.
    [[nodiscard]] std::optional<std::int64_t> integer() const;
    /// The same, absent beyond 32 bits.
    [[nodiscard]] std::optional<std::int32_t> integer32() const;

    /// The items of an array; empty where this is none.
    [[nodiscard]] const Array& items() const;
    /// The members of an object, sorted by the bytes of their keys, each key once; empty where this is none.
    [[nodiscard]] const Object& members() const;
    /// The value at a key; null where the key is missing or this is no object.
    [[nodiscard]] const Json* find(std::string_view key) const;
    [[nodiscard]] Json* find(std::string_view key);
    /// The text at a key; null where there is none or it is no string.
    [[nodiscard]] const std::string* stringAt(std::string_view key) const;
    /// The text at a key; empty where there is none or it is no string.
    [[nodiscard]] std::string textAt(std::string_view key) const;
    /// The object at a key; null where there is none or it is no object.
    [[nodiscard]] const Json* objectAt(std::string_view key) const;

    /// Sets or replaces a key. A value of another type is replaced by an object first.
    void set(std::string_view key, Json value);
    /// Removes a key, if it is there.
    void remove(std::string_view key);
    /// Adds an item at the end. A value of another type is replaced by an array first.
    void append(Json value);

    /// Numbers are equal when their texts are: 1 is not 1.0.
    bool operator==(const Json&) const = default;

  private:
    friend class JsonReader;
    struct Null {
        bool operator==(const Null&) const = default;
    };
    struct Number {
        std::string text;
        bool operator==(const Number&) const = default;
    };
    std::variant<Null, bool, Number, std::string, Array, Object> m_value;
};

struct Json::Member {
    std::string key;
    Json value;
    bool operator==(const Member&) const = default;
};

} // namespace veslora
