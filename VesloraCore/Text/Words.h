// SPDX-License-Identifier: MIT
// The texts that the core makes for people, in the words of their reader. The core itself writes English and
// knows no other language: the views hand it the words. Plain values, any thread.
#pragma once

#include <functional>
#include <initializer_list>
#include <string>
#include <string_view>

namespace veslora {

/// Marks a text that is looked up elsewhere, in that context, for the tool that collects texts to translate.
/// Gives the text as it is.
[[nodiscard]] constexpr const char* translatable(const char* /*context*/, const char* text) {
    return text;
}

class Words {
  public:
    /// Gives the text in another language; the text itself where there is none.
    using Translate = std::function<std::string(const char* context, const char* text)>;

    /// English.
    Words() = default;
    explicit Words(Translate translate, std::string decimalPoint = ".");

    /// The text in the reader's language.
    [[nodiscard]] std::string translate(const char* context, const char* text) const;
    /// What stands between the whole and the parts of a number.
    [[nodiscard]] const std::string& decimalPoint() const { return m_decimalPoint; }

    /// The pattern with the first value in place of "%1", the second in place of "%2", up to nine. A mark
    /// without a value stays, and no mark is looked for in a value.
    [[nodiscard]] static std::string filled(std::string_view pattern,
                                            std::initializer_list<std::string_view> values);

  private:
    Translate m_translate;
    std::string m_decimalPoint = ".";
};

} // namespace veslora
