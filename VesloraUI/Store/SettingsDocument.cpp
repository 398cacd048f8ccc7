// SPDX-License-Identifier: MIT
#include "VesloraUI/Store/SettingsDocument.h"

#include "VesloraCore/Text/JsonScanner.h"
#include "VesloraCore/Text/JsonText.h"
#include "VesloraCore/Text/TerminalText.h"
#include "VesloraCore/Text/Utf8.h"
#include "VesloraUI/Store/SettingJson.h"
#include "VesloraUI/Store/SettingsKeys.h"

#include <algorithm>
#include <map>
#include <optional>
#include <utility>

namespace veslora::SettingsDocument {

namespace {

/// Of which a fault is told, however many a text has.
constexpr std::size_t mostFaults = 20;

const char* patternFor(Reason reason) {
    switch (reason) {
    case Reason::tooLong:
        return translatable("Settings", "The text is too long to be one of settings.");
    case Reason::notAnObject:
        return translatable("Settings", "The text is not a JSON object.");
    case Reason::unknownKey:
        return translatable("Settings", "%1: there is no such setting.");
    case Reason::state:
        return translatable("Settings",
                            "%1: that is no setting. \"veslora pause\" and \"veslora resume\" change it.");
    case Reason::repeatedKey:
        return translatable("Settings", "%1: it is there more than once.");
    case Reason::unusable:
        break;
    }
    return translatable("Settings", "%1: it must be %2.");
}

/// The value, if it reads as itself.
std::optional<Setting::Value> usable(const Setting& setting, std::string_view raw) {
    const auto json = Json::parse(raw, Json::Reading::lossless);
    const auto value = json ? SettingJson::read(*json, setting.standard) : std::nullopt;
    if (!value || setting.held(*value) != *value) {
        return std::nullopt;
    }
    const int* integer = std::get_if<int>(&*value);
    return integer && json->number() != *integer ? std::nullopt : value;
}

/// The object's members in their order. Absent where the text is none, or no UTF-8.
std::optional<std::vector<std::pair<std::string, std::string_view>>> membersOf(std::string_view text) {
    std::vector<std::pair<std::string, std::string_view>> members;
    JsonScanner scanner(text);
    const bool isObject = Utf8::isValid(text) && scanner.object([&](const JsonScanner::Key& key) {
        members.emplace_back(JsonText::unescape(key.raw()).text, scanner.raw());
    });
    return isObject && scanner.isComplete() ? std::optional(std::move(members)) : std::nullopt;
}

std::variant<Setting::Change, Reason> judge(const std::string& key, std::string_view raw, int count) {
    const Setting* setting = SettingsKeys::named(key);
    if (setting == nullptr) {
        return Reason::unknownKey;
    }
    if (setting->isState) {
        return Reason::state;
    }
    if (count > 1) {
        return Reason::repeatedKey;
    }
    auto value = usable(*setting, raw);
    return value ? std::variant<Setting::Change, Reason>(Setting::Change(setting->key, *std::move(value)))
                 : Reason::unusable;
}

} // namespace

Reading read(std::string_view text) {
    if (text.size() > longest) {
        return std::vector{Fault{Reason::tooLong, {}}};
    }
    const auto members = membersOf(text);
    if (!members) {
        return std::vector{Fault{Reason::notAnObject, {}}};
    }
    std::map<std::string_view, int> counts;
    for (const auto& [key, raw] : *members) {
        ++counts[key];
    }
    Changes changes;
    std::vector<Fault> faults;
    for (const auto& [key, raw] : *members) {
        auto judged = judge(key, raw, counts[key]);
        if (auto* change = std::get_if<Setting::Change>(&judged)) {
            changes.push_back(std::move(*change));
        } else if (Fault fault{std::get<Reason>(judged), key};
                   faults.size() < mostFaults && std::ranges::find(faults, fault) == faults.end()) {
            faults.push_back(std::move(fault));
        }
    }
    return faults.empty() ? Reading(std::move(changes)) : Reading(std::move(faults));
}

std::string explain(const Fault& fault, const Words& words) {
    constexpr std::size_t longestKey = 60;
    const Setting* setting = SettingsKeys::named(fault.key);
    return Words::filled(words.translate("Settings", patternFor(fault.reason)),
                         {TerminalText::withoutControls(fault.key.substr(0, longestKey)),
                          setting ? setting->description(words) : std::string()});
}

Json withoutDefaults(const Json& settings) {
    Json object = Json::makeObject();
    for (const Json::Member& member : settings.members()) {
        const Setting* setting = SettingsKeys::named(member.key);
        if (setting != nullptr && SettingJson::make(setting->standard) != member.value) {
            object.set(member.key, member.value);
        }
    }
    return object;
}

std::string plain(const Json& value) {
    const std::string* text = value.string();
    return text != nullptr ? *text : value.print(Json::Layout::compact);
}

std::variant<std::string, Fault> assigning(std::string_view key, std::string_view typed) {
    const Setting* setting = SettingsKeys::named(key);
    if (setting == nullptr) {
        return Fault{Reason::unknownKey, std::string(key)};
    }
    const bool isText = std::holds_alternative<std::string>(setting->standard);
    const bool isUsable = typed.size() <= longest && Utf8::isValid(typed);
    auto value = !isUsable ? std::nullopt
                 : isText  ? std::optional(Json::makeString(std::string(typed)))
                           : Json::parse(typed);
    if (!value) {
        return Fault{setting->isState ? Reason::state : Reason::unusable, std::string(key)};
    }
    Json object = Json::makeObject();
    object.set(key, *std::move(value));
    return object.print(Json::Layout::compact);
}

} // namespace veslora::SettingsDocument
