// SPDX-License-Identifier: MIT
// What is read of a hook's payload, the same for both agents and for events and requests. It is taken out of
// the document without building the rest, since the answer of a tool may be megabytes long. Plain value, any
// thread.
#pragma once

#include "VesloraCore/Text/Json.h"

#include <cstddef>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

namespace veslora {

struct HookPayload {
    /// No name, identifier or folder comes near so many bytes; a longer one counts as absent. What is kept
    /// of a payload is compared and copied at every change.
    static constexpr std::size_t longestText = 4096;
    /// A longer input is built by nobody: a request that holds one is not answered from the island.
    static constexpr std::size_t longestInput = std::size_t{1} << 20;

    std::optional<std::string> sessionId;
    std::optional<std::string> eventName;
    std::string tool;                            ///< empty where there is none
    std::string cwd;                             ///< empty where there is none
    std::string message;                         ///< whole; empty where there is none
    std::optional<std::string> notificationType; ///< absent also where it is no text
    std::string_view toolInput; ///< as it stands in the document, which it points into; empty for no object

    /// Nothing for anything but a JSON object; what `Json::parse` refuses is refused here. `document` must
    /// outlive the payload.
    [[nodiscard]] static std::optional<HookPayload> parse(std::string_view document);

    /// Whether it is a permission request that names its session and its tool.
    [[nodiscard]] bool isRequest() const;
    /// The tool's input; an empty object where there is none. Absent where it is longer than `longestInput`.
    [[nodiscard]] std::optional<Json> input() const;
    /// An object of those members of the tool's input alone that are texts under one of `keys`, however long
    /// the input is.
    [[nodiscard]] Json inputTexts(std::initializer_list<std::string_view> keys) const;
};

} // namespace veslora
