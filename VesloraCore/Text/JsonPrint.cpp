// SPDX-License-Identifier: MIT
// Printing a value. The pretty form is the one that the agents' own files are given when we edit them.
#include "VesloraCore/Text/Json.h"

namespace veslora {

namespace {

class Printer {
  public:
    explicit Printer(Json::Layout layout) : m_isPretty(layout == Json::Layout::pretty) {}

    void value(const Json& value, int depth);
    std::string take() { return std::move(m_text); }

  private:
    void array(const Json::Array& items, int depth);
    void object(const Json::Object& members, int depth);
    void quoted(std::string_view text);
    void escape(unsigned char byte);
    void line(int depth);

    bool m_isPretty;
    std::string m_text;
};

void Printer::value(const Json& value, int depth) {
    if (value.isObject()) {
        object(value.members(), depth);
    } else if (value.isArray()) {
        array(value.items(), depth);
    } else if (const std::string* text = value.string()) {
        quoted(*text);
    } else if (const std::string* digits = value.numberText()) {
        m_text += *digits;
    } else if (const std::optional<bool> truth = value.boolean()) {
        m_text += *truth ? "true" : "false";
    } else {
        m_text += "null";
    }
}

void Printer::array(const Json::Array& items, int depth) {
    m_text += '[';
    for (const Json& item : items) {
        if (&item != &items.front()) {
            m_text += ',';
        }
        line(depth + 1);
        value(item, depth + 1);
    }
    if (!items.empty()) {
        line(depth);
    }
    m_text += ']';
}

void Printer::object(const Json::Object& members, int depth) {
    m_text += '{';
    for (const Json::Member& member : members) {
        if (&member != &members.front()) {
            m_text += ',';
        }
        line(depth + 1);
        quoted(member.key);
        m_text += m_isPretty ? " : " : ":";
        value(member.value, depth + 1);
    }
    if (!members.empty()) {
        line(depth);
    }
    m_text += '}';
}

void Printer::quoted(std::string_view text) {
    m_text += '"';
    for (const char byte : text) {
        if (byte == '"' || byte == '\\' || static_cast<unsigned char>(byte) < 0x20) {
            escape(static_cast<unsigned char>(byte));
        } else {
            m_text += byte;
        }
    }
    m_text += '"';
}

void Printer::escape(unsigned char byte) {
    constexpr std::string_view plain = "\"\\\b\f\n\r\t";
    constexpr std::string_view letters = "\"\\bfnrt";
    constexpr std::string_view digits = "0123456789abcdef";
    m_text += '\\';
    const std::size_t place = plain.find(static_cast<char>(byte));
    if (place != std::string_view::npos) {
        m_text += letters[place];
    } else {
        m_text.append("u00").append(1, digits[byte >> 4]).append(1, digits[byte & 15]);
    }
}

void Printer::line(int depth) {
    if (m_isPretty) {
        m_text.append("\n").append(static_cast<std::size_t>(depth) * 2, ' ');
    }
}

} // namespace

std::string Json::print(Layout layout) const {
    Printer printer(layout);
    printer.value(*this, 0);
    return printer.take();
}

} // namespace veslora
