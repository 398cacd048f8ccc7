// SPDX-License-Identifier: MIT
#include "VesloraCore/Updates/UpdateFailure.h"

#include <algorithm>
#include <array>
#include <utility>

namespace veslora {

namespace {

constexpr std::array<std::pair<UpdateFailure, std::string_view>, 12> words{{
    {UpdateFailure::unreachable, "unreachable"},
    {UpdateFailure::slow, "slow"},
    {UpdateFailure::insecure, "insecure"},
    {UpdateFailure::missing, "missing"},
    {UpdateFailure::tooLarge, "tooLarge"},
    {UpdateFailure::incomplete, "incomplete"},
    {UpdateFailure::badSignature, "badSignature"},
    {UpdateFailure::unreadable, "unreadable"},
    {UpdateFailure::noPackage, "noPackage"},
    {UpdateFailure::folder, "folder"},
    {UpdateFailure::changed, "changed"},
    {UpdateFailure::helper, "helper"},
}};

} // namespace

std::string_view rawValue(UpdateFailure failure) {
    return std::ranges::find(words, failure, &decltype(words)::value_type::first)->second;
}

std::optional<UpdateFailure> updateFailureFrom(std::string_view rawValue) {
    const auto* const found = std::ranges::find(words, rawValue, &decltype(words)::value_type::second);
    return found == words.end() ? std::nullopt : std::optional(found->first);
}

} // namespace veslora
