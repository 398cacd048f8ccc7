// SPDX-License-Identifier: MIT
// Makes JSON values for tests of properties: of every kind, with the awkward texts and numbers, always the
// same ones.
#pragma once

#include "VesloraCore/Text/Json.h"

#include <random>
#include <string>
#include <vector>

namespace veslora::test {

class JsonGenerator {
  public:
    Json value(int depth) {
        const int kind = pick(depth > 0 ? 6 : 4);
        if (kind == 0) {
            return Json();
        }
        if (kind == 1) {
            return Json::makeBoolean(pick(2) == 1);
        }
        if (kind == 2) {
            return *Json::parse(
                m_numbers[static_cast<std::size_t>(pick(static_cast<int>(m_numbers.size())))]);
        }
        if (kind == 3) {
            return Json::makeString(text());
        }
        Json made = kind == 4 ? Json::makeArray() : Json::makeObject();
        for (int count = pick(5); count > 0; --count) {
            kind == 4 ? made.append(value(depth - 1)) : made.set(text(), value(depth - 1));
        }
        return made;
    }
    std::string text() {
        std::string made;
        for (int count = pick(6); count > 0; --count) {
            made += m_texts[static_cast<std::size_t>(pick(static_cast<int>(m_texts.size())))];
        }
        return made;
    }
    /// From 0 to below `count`.
    int pick(int count) { return static_cast<int>(m_random() % static_cast<unsigned>(count)); }

  private:
    const std::vector<std::string> m_numbers = {"0",
                                                "-0",
                                                "1.0",
                                                "1e400",
                                                "-1E-400",
                                                "41.7",
                                                "-12",
                                                "1.50e+3",
                                                "9223372036854775807",
                                                "123456789012345678901234567890"};
    const std::vector<std::string> m_texts = {
        "a",       "key", "\"", "\\", "/", "\n", "\x01", std::string(1, '\0'),
        "\x7f",    "é",   "😀",  "{",  "]", ",",  ":",    "\xE2\x80\xAE",
        "\\u0041", " "};
    std::mt19937 m_random{20240229};
};

} // namespace veslora::test
