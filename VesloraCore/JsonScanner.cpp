// SPDX-License-Identifier: MIT
#include "VesloraCore/JsonScanner.h"

#include "VesloraCore/ByteBlock.h"
#include "VesloraCore/Json.h"
#include "VesloraCore/JsonText.h"

namespace veslora {

namespace {

bool endsPlainText(char byte) {
    return byte == '"' || byte == '\\' || static_cast<unsigned char>(byte) < 0x20;
}

// The first quote, backslash or control character at or after `at`.
std::size_t endOfPlainText(std::string_view text, std::size_t at) {
    // OPTIMIZATION: eight bytes a step; most bytes of a transcript are long strings. PENDING
    for (; at + ByteBlock::size <= text.size(); at += ByteBlock::size) {
        const std::uint64_t block = ByteBlock::load(text.data() + at);
        const std::uint64_t ends = ByteBlock::zeros(block ^ ByteBlock::repeated('"')) |
                                   ByteBlock::zeros(block ^ ByteBlock::repeated('\\')) |
                                   ByteBlock::below(block, 0x20);
        if (ends != 0)
            return at + ByteBlock::first(ends);
    }
    while (at < text.size() && !endsPlainText(text[at]))
        ++at;
    return at;
}

bool isScalarByte(char byte) {
    const char lower = static_cast<char>(byte | 0x20);
    return (byte >= '0' && byte <= '9') || (lower >= 'a' && lower <= 'z') || byte == '-' || byte == '+' ||
           byte == '.';
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
    while (m_at < m_document.size() && JsonText::isBlank(m_document[m_at]))
        ++m_at;
}

bool JsonScanner::isNext(char byte) {
    skipBlanks();
    return m_at < m_document.size() && m_document[m_at] == byte;
}

bool JsonScanner::take(char byte) {
    if (!isNext(byte))
        return false;
    ++m_at;
    return true;
}

void JsonScanner::enter() {
    ++m_at;
    m_isFirst = true;
    if (++m_depth > Json::depthLimit)
        fail();
}

bool JsonScanner::leave() {
    --m_depth;
    m_isFirst = false;
    return !m_failed;
}

// Steps to the next thing in a container; false at its end, which is stepped over, and where neither follows.
bool JsonScanner::separate(char end) {
    if (m_failed || take(end))
        return false;
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
    if (!separate('}'))
        return false;
    if (!isNext('"')) {
        fail();
        return false;
    }
    key = rawString();
    if (!m_failed && !take(':'))
        fail();
    return !m_failed;
}

// What stands between the quotes of the string that comes next.
std::string_view JsonScanner::rawString() {
    const std::size_t start = ++m_at;
    while (true) {
        m_at = endOfPlainText(m_document, m_at);
        if (m_at < m_document.size() && m_document[m_at] == '"')
            return m_document.substr(start, m_at++ - start);
        if (m_at >= m_document.size() || m_document[m_at] != '\\') {
            fail();
            return {};
        }
        stepOverEscape();
    }
}

void JsonScanner::stepOverEscape() {
    const std::size_t length = JsonText::escapeLength(m_document, m_at);
    if (length == 0)
        fail();
    else
        m_at += length;
}

std::string_view JsonScanner::scalar() {
    const std::size_t start = m_at;
    while (m_at < m_document.size() && isScalarByte(m_document[m_at]))
        ++m_at;
    const std::string_view token = m_document.substr(start, m_at - start);
    if (!isScalar(token))
        fail();
    return token;
}

void JsonScanner::skip() {
    if (isNext('{')) {
        enter();
        for (std::string_view key; nextMember(key);)
            skip();
        static_cast<void>(leave());
    } else if (isNext('[')) {
        enter();
        while (nextItem())
            skip();
        static_cast<void>(leave());
    } else if (isNext('"')) {
        static_cast<void>(rawString());
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
    if (raw.find('\\') == std::string_view::npos)
        return m_failed ? std::nullopt : std::optional<std::string>(raw);
    std::optional<JsonText::Unescaped> unescaped = JsonText::unescape(raw);
    return unescaped ? std::optional(std::move(unescaped->text)) : std::nullopt;
}

std::int64_t JsonScanner::count() {
    if (isNext('{') || isNext('[') || isNext('"')) {
        skip();
        return 0;
    }
    const std::string_view token = scalar();
    if (m_failed)
        return 0;
    return token == "true" ? 1 : JsonText::integer(token).value_or(0);
}

bool JsonScanner::isComplete() {
    skipBlanks();
    return !m_failed && m_at == m_document.size();
}

} // namespace veslora
