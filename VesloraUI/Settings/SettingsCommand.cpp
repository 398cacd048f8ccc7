// SPDX-License-Identifier: MIT
#include "VesloraUI/Settings/SettingsCommand.h"

#include "VesloraUI/Store/SettingsDocument.h"
#include "VesloraUI/Store/StoredSettings.h"
#include "VesloraUI/Support/FileReasons.h"

#include <QCoreApplication>

#include <variant>
#include <vector>

namespace veslora::SettingsCommand {

CommandOutcome exported(const Defaults& settings) {
    return {true, StoredSettings::print(settings).print(Json::Layout::compact)};
}

CommandOutcome import(Defaults& settings, const std::string& text) {
    const auto reading = SettingsDocument::read(text);
    if (const auto* faults = std::get_if<std::vector<SettingsDocument::Fault>>(&reading)) {
        return {false, SettingsDocument::explain(faults->front())};
    }
    settings.set(std::get<SettingsDocument::Changes>(reading));
    if (const std::error_code error = settings.writeNow()) {
        return {false, QCoreApplication::translate("SettingsCommand", "The settings couldn't be written: %1.")
                           .arg(FileReasons::text(error))
                           .toStdString()};
    }
    return {};
}

} // namespace veslora::SettingsCommand
