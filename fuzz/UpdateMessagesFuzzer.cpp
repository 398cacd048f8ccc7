// SPDX-License-Identifier: MIT
// What the program and its helper for updates say to each other: what is taken can be said again, and is the
// same.
#include "VesloraCore/Updates/UpdateMessages.h"
#include "fuzz/Fuzzing.h"

using namespace veslora;
using fuzz::require;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text = fuzz::textOf(data, size);
    if (const auto answer = UpdateMessages::parseAnswer(text)) {
        require(UpdateMessages::parseAnswer(UpdateMessages::print(*answer)) == answer);
    }
    auto question = UpdateMessages::parseQuestion(text);
    if (question) {
        // Notes are not told to the helper.
        if (auto* const package = std::get_if<PackageQuestion>(&*question)) {
            package->item.notes.clear();
        }
        require(UpdateMessages::parseQuestion(UpdateMessages::print(*question)) == question);
    }
    return 0;
}
