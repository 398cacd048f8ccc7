// SPDX-License-Identifier: MIT
// What a failure has to leave behind: exactly one warning, that tells what it is about and the reason.
#pragma once

#include "tests/support/LogRecorder.h"

#include <gmock/gmock.h>

#include <cstring>
#include <string>
#include <system_error>

namespace veslora::testing {

/// Of `LogRecorder::warnings`.
inline auto oneLine(const std::string& category, const std::string& about, const std::string& reason) {
    using ::testing::AllOf;
    using ::testing::ElementsAre;
    using ::testing::Field;
    using ::testing::HasSubstr;
    return ElementsAre(AllOf(Field(&LogRecorder::Line::category, category),
                             Field(&LogRecorder::Line::text, AllOf(HasSubstr(about), HasSubstr(reason)))));
}

/// Of `LogRecorder::warnings`, with the words of the system for an error number.
inline auto oneLine(const std::string& category, const std::string& about, int error) {
    return oneLine(category, about, std::strerror(error));
}
inline auto oneLine(const std::string& category, const std::string& about, std::errc reason) {
    return oneLine(category, about, std::make_error_code(reason).message());
}

/// Of any list of lines: no line holds `text`.
inline auto noLineWith(const std::string& text) {
    return ::testing::Each(
        ::testing::Field(&LogRecorder::Line::text, ::testing::Not(::testing::HasSubstr(text))));
}

} // namespace veslora::testing
