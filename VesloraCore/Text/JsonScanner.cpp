// SPDX-License-Identifier: MIT
#include "VesloraCore/Text/JsonScanner.h"

#include "VesloraCore/Text/ByteBlock.h"
#include "VesloraCore/Text/Json.h"
#include "VesloraCore/Text/JsonText.h"

#include <algorithm>
#include <array>

namespace veslora {

namespace {

/// What the scanner must know of a byte.
enum Trait : std::uint8_t {
    endsPlainText = 1, ///< a quote, a backslash or a control character
    belongsToScalar = 2,
    isSimpleEscape = 4, ///< may follow a backslash and stands for one character
    isBlank = 8,
};

constexpr std::array<std::uint8_t, 256> makeTraits() {
    std::array<std::uint8_t, 256> traits{};
    const auto mark = [&traits](std::string_view bytes, Trait trait) {
        for (const char byte : bytes) {
            traits[static_cast<unsigned char>(byte)] |= trait;
        }
    };
    for (std::size_t byte = 0; byte < 0x20; ++byte) {
        traits[byte] = endsPlainText;
    }
    mark("\"\\", endsPlainText);
    mark("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789+-.", belongsToScalar);
    mark("\"\\/bfnrt", isSimpleEscape);
    mark(" \t\n\r", isBlank);
    return traits;
}

constexpr std::array<std::uint8_t, 256> traits = makeTraits();

bool has(char byte, Trait trait) {
    return (traits[static_cast<unsigned char>(byte)] & trait) != 0;
}

// The first quote, backslash or control character at or after `at`.
std::size_t endOfPlainText(std::string_view text, std::size_t at) {
    // OPTIMIZATION: many bytes a step; most bytes of a transcript are long strings. With it, and the table
    // above, 1.2 GiB of transcripts took 0.89 s of processor time to read instead of 1.11 s.
    const ByteBlock::Block quote = ByteBlock::repeated('"');
    const ByteBlock::Block backslash = ByteBlock::repeated('\\');
    const ByteBlock::Block space = ByteBlock::repeated(' ');
    for (; at + ByteBlock::size <= text.size(); at += ByteBlock::size) {
        const ByteBlock::Block block = ByteBlock::load(text.data() + at);
        const ByteBlock::Flags ends =
            ByteBlock::equal(block, quote) | ByteBlock::equal(block, backslash) | (block < space);
        if (ByteBlock::any(ends)) {
            return at + ByteBlock::first(ends);
        }
    }
    while (at < text.size() && !has(text[at], endsPlainText)) {
        ++at;
    }
    return at;
}

bool isScalar(std::string_view token) {
    return token == "null" || token == "true" || token == "false" || JsonText::isNumber(token);
}

} // namespace

bool JsonScanner::Key::isEscapedFormOf(std::string_view name) const {
    const std::optional<JsonText::Unescaped> key = JsonText::unescape(m_raw);
    return key && key->text == name;
}

JsonScanner::JsonScanner(std::string_view document) : m_document(JsonText::withoutByteOrderMark(document)) {}

// After a failure everything rests at the end of the document, where nothing more is found.
void JsonScanner::fail() {
    m_failed = true;
    m_at = m_document.size();
}

void JsonScanner::skipBlanks() {
    while (m_at < m_document.size() && has(m_document[m_at], isBlank)) {
        ++m_at;
    }
}

bool JsonScanner::isNext(char byte) {
    // What an agent writes has no blanks between its tokens.
    if (m_at < m_document.size() && has(m_document[m_at], isBlank)) {
        skipBlanks();
    }
    return m_at < m_document.size() && m_document[m_at] == byte;
}

bool JsonScanner::take(char byte) {
    if (!isNext(byte)) {
        return false;
    }
    ++m_at;
    return true;
}

void JsonScanner::enter() {
    ++m_at;
    m_isFirst = true;
    if (++m_depth > Json::depthLimit) {
        fail();
    }
}

bool JsonScanner::leave() {
    --m_depth;
    m_isFirst = false;
    return !m_failed;
}

// Steps to the next thing in a container; false at its end, which is stepped over, and where neither follows.
bool JsonScanner::separate(char end) {
    if (m_failed || take(end)) {
        return false;
    }
    if (!m_isFirst && !take(',')) {
        fail();
        return false;
    }
    m_isFirst = false;
    return true;
}

bool JsonScanner::nextItem() {
    return separate(']');
}

bool JsonScanner::nextMember(std::string_view& key) {
    if (!separate('}')) {
        return false;
    }
    if (!isNext('"')) {
        fail();
        return false;
    }
    key = rawString();
    if (!m_failed && !take(':')) {
        fail();
    }
    return !m_failed;
}

// What stands between the quotes of the string that comes next.
std::string_view JsonScanner::rawString() {
    const std::size_t start = ++m_at;
    while (true) {
        m_at = endOfPlainText(m_document, m_at);
        if (m_at < m_document.size() && m_document[m_at] == '"') {
            return m_document.substr(start, m_at++ - start);
        }
        if (m_at >= m_document.size() || m_document[m_at] != '\\') {
            fail();
            return {};
        }
        stepOverEscape();
    }
}

void JsonScanner::stepOverEscape() {
    if (m_at + 1 < m_document.size() && has(m_document[m_at + 1], isSimpleEscape)) {
        m_at += 2;
        return;
    }
    const std::size_t length = JsonText::escapeLength(m_document, m_at);
    if (length == 0) {
        fail();
    } else {
        m_at += length;
    }
}

std::string_view JsonScanner::scalar() {
    const std::size_t start = m_at;
    while (m_at < m_document.size() && has(m_document[m_at], belongsToScalar)) {
        ++m_at;
    }
    const std::string_view token = m_document.substr(start, m_at - start);
    if (!isScalar(token)) {
        fail();
    }
    return token;
}

void JsonScanner::skip() {
    const bool isArray = isNext('[');
    const char byte = m_at < m_document.size() ? m_document[m_at] : ' ';
    if (byte == '"') {
        static_cast<void>(rawString());
    } else if (byte == '{') {
        enter();
        for (std::string_view key; nextMember(key);) {
            skip();
        }
        static_cast<void>(leave());
    } else if (isArray) {
        enter();
        while (nextItem()) {
            skip();
        }
        static_cast<void>(leave());
    } else {
        static_cast<void>(scalar());
    }
}

std::optional<std::string> JsonScanner::string() {
    if (!isNext('"')) {
        skip();
        return std::nullopt;
    }
    const std::string_view raw = rawString();
    if (raw.find('\\') == std::string_view::npos) {
        return m_failed ? std::nullopt : std::optional<std::string>(raw);
    }
    std::optional<JsonText::Unescaped> unescaped = JsonText::unescape(raw);
    return unescaped ? std::optional(std::move(unescaped->text)) : std::nullopt;
}

std::string_view JsonScanner::raw() {
    skipBlanks();
    const std::size_t start = m_at;
    skip();
    return m_failed ? std::string_view() : m_document.substr(start, m_at - start);
}

std::int64_t JsonScanner::count() {
    if (isNext('{') || isNext('[') || isNext('"')) {
        skip();
        return 0;
    }
    const std::string_view token = scalar();
    if (m_failed) {
        return 0;
    }
    return token == "true" ? 1 : JsonText::integer(token).value_or(0);
}

bool JsonScanner::isComplete() {
    skipBlanks();
    return !m_failed && m_at == m_document.size();
}

} // namespace veslora
