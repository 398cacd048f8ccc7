// SPDX-License-Identifier: MIT
// Scans a JSON document (RFC 8259) from front to back without building anything of it. This is the only JSON
// grammar of the program: `Json` builds its values with it, `JsonPath` searches with it, and transcripts and
// hook payloads, of which megabytes are read for a few values, use it directly. Plain value, any thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace veslora {

class JsonScanner {
  public:
    /// A value's kind by its first byte. Where no value starts it is a scalar, and a broken one.
    enum class Kind : std::uint8_t { object, array, string, scalar };

    /// A member's key.
    class Key {
      public:
        explicit Key(std::string_view raw) : m_raw(raw) {}
        /// Compares the key with its escapes resolved.
        [[nodiscard]] bool operator==(std::string_view name) const {
            return m_raw == name || (!isPlain() && isEscapedFormOf(name));
        }

        /// Whether the key contains no escapes.
        [[nodiscard]] bool isPlain() const { return m_raw.find('\\') == std::string_view::npos; }
        /// Its bytes between the quotes, as `JsonText::unescape` takes them.
        [[nodiscard]] std::string_view raw() const { return m_raw; }

      private:
        [[nodiscard]] bool isEscapedFormOf(std::string_view name) const;
        std::string_view m_raw;
    };

    /// Containers may nest this deep; a deeper document is broken. It bounds the recursion of every reader.
    static constexpr int depthLimit = 256;

    /// `document` must outlive the scanner. A byte order mark before it is skipped. Whether the document is
    /// valid UTF-8 is not checked.
    explicit JsonScanner(std::string_view document);

    /// The kind of the next value, which stays the next one.
    [[nodiscard]] Kind next();

    /// Steps over the next value. If it is an object, calls `member(key)` for each of its members, in the
    /// document's order and also for equal keys; each call must step over the member's value. False for any
    /// other value and for a broken one.
    template <class OnMember>
    bool object(OnMember&& member) {
        if (!isNext('{')) {
            skip();
            return false;
        }
        return members(member);
    }

    /// The same for an array: each call of `item()` must step over one value.
    template <class OnItem>
    bool array(OnItem&& item) {
        if (!isNext('[')) {
            skip();
            return false;
        }
        return items(item);
    }

    /// Steps over the next value, whatever it is.
    void skip();
    /// Steps over the next value. Its text if it is a string, with U+FFFD for half of a surrogate pair.
    [[nodiscard]] std::optional<std::string> string();
    /// Steps over the next value. Its bytes in the document, without the whitespace around it; empty for a
    /// broken one.
    [[nodiscard]] std::string_view raw();
    /// Steps over the next value. A number without its fraction, 1 for true; 0 for anything else and for a
    /// number beyond 64 bits.
    [[nodiscard]] std::int64_t count();

    /// Whether everything so far was well formed and nothing but whitespace follows.
    [[nodiscard]] bool isComplete();

  private:
    template <class OnMember>
    bool members(OnMember&& member) {
        enter();
        for (std::string_view key; nextMember(key);) {
            member(Key(key));
        }
        return leave();
    }
    template <class OnItem>
    bool items(OnItem&& item) {
        enter();
        while (separate(']')) {
            item();
        }
        return leave();
    }

    [[nodiscard]] bool isNext(char byte);
    void enter();
    [[nodiscard]] bool leave();
    [[nodiscard]] bool nextMember(std::string_view& key);
    [[nodiscard]] bool separate(char end);
    [[nodiscard]] bool take(char byte);
    [[nodiscard]] std::string_view rawString();
    [[nodiscard]] std::string_view scalar();
    void stepOverEscape();
    void skipWhitespace();
    void fail();

    std::string_view m_document;
    std::size_t m_at = 0;
    int m_depth = 0;
    bool m_isFirst = false; ///< nothing of the innermost container was read yet
    bool m_failed = false;
};

} // namespace veslora
