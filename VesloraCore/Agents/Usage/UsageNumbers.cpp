// SPDX-License-Identifier: MIT
#include "VesloraCore/Agents/Usage/UsageNumbers.h"

namespace veslora::UsageNumbers {

std::optional<double> numberAt(const Json& object, std::string_view key) {
    const Json* value = object.find(key);
    return value ? value->number() : std::nullopt;
}

std::optional<std::int64_t> integerAt(const Json& object, std::string_view key) {
    const Json* value = object.find(key);
    return value ? value->integer() : std::nullopt;
}

std::optional<double> percent(std::optional<double> value) {
    return value && *value >= 0 && *value <= 100 ? value : std::nullopt;
}

std::optional<double> percentAt(const Json& object, std::string_view key) {
    return percent(numberAt(object, key));
}

} // namespace veslora::UsageNumbers
