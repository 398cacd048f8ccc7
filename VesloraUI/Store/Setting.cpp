// SPDX-License-Identifier: MIT
#include "VesloraUI/Store/Setting.h"

#include "VesloraCore/Overloaded.h"
#include "VesloraUI/Store/SettingJson.h"

#include <cmath>

namespace veslora {

namespace {

std::string numberText(double number) {
    const auto json = SettingJson::make(number);
    return json ? json->print(Json::Layout::compact) : std::string();
}

std::string rangeText(const ClosedRange& range, bool isWhole, const Words& words) {
    const std::string lower = numberText(range.lower);
    if (std::isinf(range.upper)) {
        return Words::filled(words.translate("Settings", "a number from %1 on"), {lower});
    }
    const char* pattern = isWhole ? translatable("Settings", "a whole number from %1 to %2")
                                  : translatable("Settings", "a number from %1 to %2");
    return Words::filled(words.translate("Settings", pattern), {lower, numberText(range.upper)});
}

std::string choicesText(const Setting::Choices& choices, const Words& words) {
    std::string list;
    for (const std::string& choice : choices.all) {
        list += (list.empty() ? "" : ", ") + choice;
    }
    return Words::filled(words.translate("Settings", "one of %1"), {list});
}

} // namespace

Setting::Value Setting::held(const Value& stored) const {
    if (const auto* range = std::get_if<ClosedRange>(&bounds)) {
        if (const int* integer = std::get_if<int>(&stored)) {
            // Nothing that is counted may be none, so that stands for a value that is not there.
            return *integer == 0 ? standard : Value(static_cast<int>(range->clamped(*integer)));
        }
        return range->clamped(std::get<double>(stored));
    }
    if (const auto* choices = std::get_if<Choices>(&bounds)) {
        return std::ranges::find(choices->all, std::get<std::string>(stored)) == choices->all.end() ? standard
                                                                                                    : stored;
    }
    const auto* form = std::get_if<Form>(&bounds);
    return form ? Value(form->read(std::get<std::string>(stored))) : stored;
}

std::string Setting::description(const Words& words) const {
    return std::visit(
        Overloaded{[&](std::monostate) { return words.translate("Settings", "true or false"); },
                   [&](const ClosedRange& range) {
                       return rangeText(range, std::holds_alternative<int>(standard), words);
                   },
                   [&](const Choices& choices) { return choicesText(choices, words); },
                   [&](const Form& form) { return words.translate("Settings", form.description); }},
        bounds);
}

} // namespace veslora
