// SPDX-License-Identifier: MIT
#include "VesloraUI/Store/StoredSettings.h"

#include "VesloraUI/Store/Defaults.h"
#include "VesloraUI/Store/SettingJson.h"
#include "VesloraUI/Store/SettingsKeys.h"

#include <utility>

namespace veslora {

void SettingsKeys::registerDefaults(Defaults& settings) {
    std::vector<Setting::Change> values;
    for (const Setting& setting : all()) {
        values.emplace_back(setting.key, setting.standard);
    }
    settings.registerDefaults(values);
}

Json StoredSettings::print(const Defaults& settings) {
    Json object = Json::makeObject();
    for (const Setting& setting : SettingsKeys::all()) {
        auto json = SettingJson::make(setting.held(settings.value(setting.key)));
        if (json && !setting.isState) {
            object.set(setting.key, *std::move(json));
        }
    }
    return object;
}

} // namespace veslora
