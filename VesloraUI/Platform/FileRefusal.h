// SPDX-License-Identifier: MIT
// Why a file of the user's was left alone although the system would have let it be replaced.
#pragma once

#include <string>
#include <system_error>

namespace veslora {

enum class FileRefusal {
    changed = 1,     ///< it is not what was read: another program changed, made or removed it meanwhile
    hasSecondName,   ///< it is hard-linked, and a new file would leave its other names with the old text
    losesAttributes, ///< its access list or extended attributes can't be given to a new file
};

/// The messages are for logs; what a user reads is worded where it is shown.
inline const std::error_category& fileRefusalCategory() {
    class Category final : public std::error_category {
        [[nodiscard]] const char* name() const noexcept override { return "refusal"; }
        [[nodiscard]] std::string message(int value) const override {
            switch (static_cast<FileRefusal>(value)) {
            case FileRefusal::changed:
                return "changed meanwhile";
            case FileRefusal::hasSecondName:
                return "has a second name";
            case FileRefusal::losesAttributes:
                return "attributes can't be kept";
            }
            return "refused";
        }
    };
    static const Category category;
    return category;
}

inline std::error_code make_error_code(FileRefusal refusal) { // NOLINT(readability-identifier-naming)
    return {static_cast<int>(refusal), fileRefusalCategory()};
}

} // namespace veslora

template <>
struct std::is_error_code_enum<veslora::FileRefusal> : std::true_type {};
