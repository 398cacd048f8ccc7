// SPDX-License-Identifier: MIT
// Reads a JSON document from front to back without building anything of it: for the lines of transcripts, of
// which a gigabyte is read for four numbers each, and for what hooks bring, where a tool's answer may be
// megabytes that nobody asks for. It takes what `Json::parse` takes and refuses what that refuses. Plain
// value, any thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace veslora {

class JsonScanner {
  public:
    /// `document` is valid UTF-8 and must outlive the scanner.
    explicit JsonScanner(std::string_view document);

    /// A member's key, as it stands in the document.
    class Key {
      public:
        explicit Key(std::string_view raw) : m_raw(raw) {}
        /// Whether the key reads so once its escapes are resolved.
        [[nodiscard]] bool operator==(std::string_view name) const {
            return m_raw == name || (!isPlain() && isEscapedFormOf(name));
        }

        /// Whether it stands in the document just as it reads.
        [[nodiscard]] bool isPlain() const { return m_raw.find('\\') == std::string_view::npos; }

      private:
        [[nodiscard]] bool isEscapedFormOf(std::string_view name) const;
        std::string_view m_raw;
    };

    /// Steps over the next value. If it is an object, calls `member(key)` for each of its members, which must
    /// take the member's value by one call of the scanner. False for any other value and for a broken one.
    template <class OnMember>
    bool object(OnMember&& member) {
        if (!isNext('{')) {
            skip();
            return false;
        }
        enter();
        for (std::string_view key; nextMember(key);) {
            member(Key(key));
        }
        return leave();
    }

    /// Steps over the next value, whatever it is.
    void skip();
    /// Steps over the next value. Its text if it is a string.
    [[nodiscard]] std::optional<std::string> string();
    /// Steps over the next value. Its bytes as they stand in the document, without the blanks around it;
    /// empty for a broken one.
    [[nodiscard]] std::string_view raw();
    /// Steps over the next value. What it counts: a number without its fraction, 1 for true; 0 for anything
    /// else and for a number beyond 64 bits.
    [[nodiscard]] std::int64_t count();

    /// Whether everything so far was well formed and nothing but blanks follows.
    [[nodiscard]] bool isComplete();

  private:
    [[nodiscard]] bool isNext(char byte);
    void enter();
    [[nodiscard]] bool leave();
    [[nodiscard]] bool nextMember(std::string_view& key);
    [[nodiscard]] bool nextItem();
    [[nodiscard]] bool separate(char end);
    [[nodiscard]] bool take(char byte);
    [[nodiscard]] std::string_view rawString();
    [[nodiscard]] std::string_view scalar();
    void stepOverEscape();
    void skipBlanks();
    void fail();

    std::string_view m_document;
    std::size_t m_at = 0;
    int m_depth = 0;
    bool m_isFirst = false; ///< no member or item of the innermost container was read yet
    bool m_failed = false;
};

} // namespace veslora
