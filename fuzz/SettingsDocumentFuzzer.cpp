// SPDX-License-Identifier: MIT
// A text of settings is refused with its reasons, or every change in it reads as itself and is printed as a
// text that asks for the same. Nothing of a key moves a terminal's cursor.
#include "VesloraCore/Text/TerminalText.h"
#include "VesloraUI/Store/SettingJson.h"
#include "VesloraUI/Store/SettingsDocument.h"
#include "VesloraUI/Store/SettingsKeys.h"
#include "fuzz/Fuzzing.h"

#include <tuple>

using namespace veslora;
using fuzz::require;

namespace {

void checkChanges(const SettingsDocument::Changes& changes) {
    Json object = Json::makeObject();
    for (const auto& [key, value] : changes) {
        const Setting* setting = SettingsKeys::named(key);
        require(setting != nullptr && !setting->isState && setting->held(value) == value);
        object.set(key, SettingJson::make(value).value());
    }
    const auto again = SettingsDocument::read(object.print(Json::Layout::compact));
    require(object.members().size() == changes.size());
    require(std::get<SettingsDocument::Changes>(again).size() == changes.size());
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text = fuzz::textOf(data, size);
    const auto reading = SettingsDocument::read(text);
    if (const auto* changes = std::get_if<SettingsDocument::Changes>(&reading)) {
        checkChanges(*changes);
    } else {
        require(!std::get<std::vector<SettingsDocument::Fault>>(reading).empty());
        for (const auto& fault : std::get<std::vector<SettingsDocument::Fault>>(reading)) {
            const std::string line = SettingsDocument::explain(fault);
            require(TerminalText::withoutControls(line) == line);
        }
    }
    for (const Setting& setting : SettingsKeys::all()) {
        const auto made = SettingsDocument::assigning(setting.key, text);
        if (const auto* assigned = std::get_if<std::string>(&made)) {
            std::ignore = SettingsDocument::read(*assigned);
        }
    }
    return 0;
}
