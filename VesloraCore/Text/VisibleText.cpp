// SPDX-License-Identifier: MIT
// See VisibleText.h.
#include "VesloraCore/Text/VisibleText.h"

#include "VesloraCore/Text/GraphemeClusters.h"
#include "VesloraCore/Text/Scalars.h"
#include "VesloraCore/Text/Scripts.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <optional>
#include <vector>

namespace veslora::VisibleText {

namespace {

using Scripts::Script;

/// The most marks that one letter may carry; Vietnamese and vocalised Hebrew need them.
constexpr std::size_t mostMarks = 3;

// The sign for a code point that would break the line; null for all others.
const char* signFor(char32_t codePoint) {
    switch (codePoint) {
    case U'\r':
        return "␍ ";
    case U'\n':
        return "⏎ ";
    case U'\t':
        return "⇥ ";
    default:
        return nullptr;
    }
}

// Signs of ours, and one that readers take for a blank made visible.
bool isForged(char32_t codePoint) {
    constexpr std::u32string_view ours = U"␍⏎⇥␣⟨⟩";
    return ours.find(codePoint) != std::u32string_view::npos;
}

// Finds the marks that no language writes: fonts know no place for them, so that they fall onto each other,
// onto their neighbours, or vanish.
class Marks {
  public:
    /// Takes the next code point of the text.
    [[nodiscard]] bool isStray(char32_t codePoint) {
        if (!Scalars::isMark(codePoint)) {
            m_base = codePoint;
            m_marks.clear();
            return false;
        }
        const Script script = Scripts::of(codePoint);
        const bool isForeign = script > Script::inherited && script != Scripts::of(m_base);
        const bool isStray = m_base == none || isForeign || m_marks.size() == mostMarks ||
                             std::ranges::find(m_marks, codePoint) != m_marks.end();
        if (!isStray) {
            m_marks.push_back(codePoint);
        }
        return isStray;
    }
    /// What came last is not shown as itself, so that no mark can be put on it.
    void forgetBase() { m_base = none; }

  private:
    /// No mark belongs on a blank either.
    static constexpr char32_t none = U' ';

    char32_t m_base = none;
    std::vector<char32_t> m_marks;
};

// What will be shown, as far as there is room for it.
class Room {
  public:
    explicit Room(std::size_t limit) : m_limit(limit), m_cut(limit == 0 ? 0 : std::string::npos) {}

    [[nodiscard]] bool isExceeded() const {
        constexpr std::size_t piled = mostMarks + 1;
        return m_characters > m_limit || m_codePoints > m_limit * piled;
    }
    [[nodiscard]] bool endsInBlank() const { return m_text.empty() || m_text.back() == ' '; }

    void append(std::string_view piece) {
        for (std::size_t at = 0; at < piece.size();) {
            const Scalars::Scalar scalar = Scalars::at(piece, at);
            if (m_boundaries.isStart(scalar.codePoint) && ++m_characters == m_limit) {
                m_cut = m_text.size();
            }
            m_text += piece.substr(at, scalar.length);
            ++m_codePoints;
            at += scalar.length;
        }
    }

    [[nodiscard]] Spelled taken() && {
        if (!isExceeded()) {
            return {std::move(m_text), true};
        }
        m_text.resize(std::min(m_cut, m_text.size()));
        return {std::move(m_text) + "…", false};
    }

  private:
    std::size_t m_limit;
    std::string m_text;
    GraphemeClusters::Boundaries m_boundaries;
    std::size_t m_characters = 0;
    std::size_t m_codePoints = 0;
    std::size_t m_cut; ///< where the last character begins that there is room for
};

std::string code(char32_t codePoint) {
    std::array<char, 16> digits{};
    std::snprintf(digits.data(), digits.size(), "%04X", static_cast<unsigned>(codePoint));
    return std::string("⟨U+") + digits.data() + "⟩";
}

void append(Room& room, Marks& marks, std::string_view bytes, std::optional<char32_t> codePoint) {
    constexpr char32_t replacement = 0xFFFD;
    const bool isStray = codePoint && marks.isStray(*codePoint);
    if (const char* sign = codePoint ? signFor(*codePoint) : nullptr) {
        if (!room.endsInBlank()) {
            room.append(" ");
        }
        room.append(sign);
    } else if (!codePoint || isStray || Scalars::isHidden(*codePoint) || isForged(*codePoint)) {
        room.append(code(codePoint.value_or(replacement)));
    } else {
        room.append(bytes);
        return;
    }
    marks.forgetBase();
}

} // namespace

Spelled spelled(std::string_view text, std::size_t limit) {
    Room room(limit);
    Marks marks;
    for (std::size_t at = 0; at < text.size() && !room.isExceeded();) {
        const Scalars::Scalar scalar = Scalars::at(text, at);
        append(room, marks, text.substr(at, scalar.length), scalar.codePoint);
        at += scalar.length;
    }
    return std::move(room).taken();
}

std::string line(std::string_view text) {
    return spelled(text, lineLimit).text;
}

} // namespace veslora::VisibleText
