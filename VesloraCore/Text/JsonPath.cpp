// SPDX-License-Identifier: MIT
// See JsonPath.h.
#include "VesloraCore/Text/JsonPath.h"

#include "VesloraCore/Text/Json.h"
#include "VesloraCore/Text/JsonText.h"

namespace veslora::JsonPath {

namespace {

// What is still to be gone of a path: nothing once a value lies beside it, the empty text at the wanted
// value.
using Path = std::optional<std::string_view>;

// The path below `key`; nothing when it does not lead there.
Path below(const Path& path, std::string_view key) {
    if (!path || !path->starts_with(key)) {
        return std::nullopt;
    }
    const std::string_view rest = path->substr(key.size());
    if (rest.empty()) {
        return rest;
    }
    return rest.front() == '.' && rest.size() > 1 ? Path(rest.substr(1)) : std::nullopt;
}

class Scanner {
  public:
    explicit Scanner(std::string_view document) : m_document(document) {}

    /// Reads the whole document; false when it breaks the grammar.
    bool read(std::string_view path) {
        skipBlanks();
        if (!readValue(path, 0)) {
            return false;
        }
        skipBlanks();
        return m_at == m_document.size();
    }
    const std::optional<std::string>& found() const { return m_found; }

  private:
    bool readValue(const Path& path, int depth);
    bool readMembers(const Path& path, int depth);
    bool readItems(int depth);
    bool readScalar(bool isWanted);
    std::optional<std::string> readString();
    bool take(char expected);
    void skipBlanks();

    std::string_view m_document;
    std::size_t m_at = 0;
    std::optional<std::string> m_found;
};

// Leaves the position behind the value.
bool Scanner::readValue(const Path& path, int depth) {
    if (path) {
        m_found.reset();
    }
    if (take('{')) {
        return depth < Json::depthLimit && readMembers(path, depth + 1);
    }
    if (take('[')) {
        return depth < Json::depthLimit && readItems(depth + 1);
    }
    return readScalar(path && path->empty());
}

bool Scanner::readMembers(const Path& path, int depth) {
    skipBlanks();
    if (take('}')) {
        return true;
    }
    do {
        skipBlanks();
        const std::optional<std::string> key = readString();
        skipBlanks();
        if (!key || !take(':')) {
            return false;
        }
        skipBlanks();
        if (!readValue(below(path, *key), depth)) {
            return false;
        }
        skipBlanks();
    } while (take(','));
    return take('}');
}

bool Scanner::readItems(int depth) {
    skipBlanks();
    if (take(']')) {
        return true;
    }
    do {
        skipBlanks();
        if (!readValue(std::nullopt, depth)) {
            return false;
        }
        skipBlanks();
    } while (take(','));
    return take(']');
}

bool Scanner::readScalar(bool isWanted) {
    if (m_document.substr(m_at).starts_with('"')) {
        std::optional<std::string> text = readString();
        const bool isGood = text.has_value();
        if (isWanted) {
            m_found = std::move(text);
        }
        return isGood;
    }
    const std::size_t end = m_document.find_first_of(" \t\r\n,:[]{}\"", m_at);
    const std::string_view token = m_document.substr(m_at, end == std::string_view::npos ? end : end - m_at);
    m_at += token.size();
    if (token == "null") {
        return true;
    }
    if (isWanted) {
        m_found = std::string(token);
    }
    return token == "true" || token == "false" || JsonText::isNumber(token);
}

std::optional<std::string> Scanner::readString() {
    if (!take('"')) {
        return std::nullopt;
    }
    const std::size_t end = JsonText::closingQuote(m_document, m_at);
    if (end == std::string_view::npos) {
        return std::nullopt;
    }
    std::optional<JsonText::Unescaped> text = JsonText::unescape(m_document.substr(m_at, end - m_at));
    m_at = end + 1;
    return text ? std::optional(std::move(text->text)) : std::nullopt;
}

bool Scanner::take(char expected) {
    if (m_at >= m_document.size() || m_document[m_at] != expected) {
        return false;
    }
    ++m_at;
    return true;
}

void Scanner::skipBlanks() {
    while (m_at < m_document.size() && JsonText::isBlank(m_document[m_at])) {
        ++m_at;
    }
}

} // namespace

std::optional<std::string> valueAt(std::string_view document, std::string_view path) {
    Scanner scanner(JsonText::withoutByteOrderMark(document));
    return scanner.read(path) ? scanner.found() : std::nullopt;
}

} // namespace veslora::JsonPath
