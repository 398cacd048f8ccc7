// SPDX-License-Identifier: MIT
#include "Veslora/SettingsWords.h"

#include "Veslora/Asking.h"
#include "Veslora/Terminal.h"
#include "VesloraCore/Text/TerminalText.h"
#include "VesloraLinux/System/PosixFiles.h"
#include "VesloraUI/Store/SettingJson.h"
#include "VesloraUI/Store/SettingsDocument.h"
#include "VesloraUI/Store/SettingsKeys.h"
#include "VesloraUI/Support/FileReasons.h"

#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <functional>
#include <system_error>
#include <variant>

namespace veslora::SettingsWords {

namespace {

using SettingsDocument::Fault;

int refuseAll(const std::vector<Fault>& faults, const Words& words) {
    for (const Fault& fault : faults) {
        [[maybe_unused]] const int status = Terminal::refuse(SettingsDocument::explain(fault, words));
    }
    return 1;
}

/// Asks for all settings and gives the status of what `show` does with them.
int withSettings(const Words& words, const std::function<int(const Json&)>& show) {
    auto answer = Asking::askOrDo({Command::exportSettings}, words);
    if (answer.result == RunningInstance::Result::done) {
        const auto settings = Json::parse(answer.text);
        const auto reading = SettingsDocument::read(answer.text);
        if (settings && std::holds_alternative<SettingsDocument::Changes>(reading)) {
            return show(*settings);
        }
        answer = {RunningInstance::Result::strange, {}};
    }
    return Asking::report(answer, words);
}

std::string lineOf(const Setting& setting, const Json& value) {
    const auto standard = SettingJson::make(setting.standard);
    return std::string(setting.key) + "\t" + SettingsDocument::plain(value) + "\t" +
           (standard ? SettingsDocument::plain(*standard) : "") + "\t" + setting.description() + "\n";
}

int printAll(const Json& settings) {
    std::string lines;
    for (const Json::Member& member : settings.members()) {
        if (const Setting* setting = SettingsKeys::named(member.key)) {
            lines += lineOf(*setting, member.value);
        }
    }
    return Terminal::print(lines);
}

/// What was read, or why nothing was.
ReadResult readStandardInput() {
    ReadResult result;
    char bytes[4096];
    while (result.bytes.size() <= SettingsDocument::longest) {
        const ssize_t count = read(STDIN_FILENO, bytes, sizeof bytes);
        if (count > 0) {
            result.bytes.append(bytes, static_cast<std::size_t>(count));
        } else if (count == 0) {
            return result;
        } else if (errno != EINTR) {
            result.error = {errno, std::generic_category()};
            return result;
        }
    }
    result.error = std::make_error_code(std::errc::file_too_large);
    return result;
}

ReadResult readFile(const std::string& name) {
    std::error_code error;
    const auto path = std::filesystem::absolute(name, error);
    if (error) {
        return {{}, error};
    }
    return PosixFiles().read(
        path.string(), {.links = Links::follow, .owners = Owners::anyone, .cap = SettingsDocument::longest});
}

int takeOver(const std::string& text, const Words& words) {
    const auto reading = SettingsDocument::read(text);
    if (const auto* faults = std::get_if<std::vector<Fault>>(&reading)) {
        return refuseAll(*faults, words);
    }
    // Once more and without what a person may have put between the lines, as one line of what counts.
    Json settings = Json::makeObject();
    for (const auto& [key, value] : std::get<SettingsDocument::Changes>(reading)) {
        if (auto json = SettingJson::make(value)) {
            settings.set(key, *std::move(json));
        }
    }
    return Asking::report(
        Asking::askOrDo({Command::importSettings, {}, settings.print(Json::Layout::compact)}, words), words);
}

} // namespace

int get(const CommandLine::Get& request, const Words& words) {
    const Setting* setting = SettingsKeys::named(request.key);
    if (!request.key.empty() && (setting == nullptr || setting->isState)) {
        const auto reason =
            setting == nullptr ? SettingsDocument::Reason::unknownKey : SettingsDocument::Reason::state;
        return refuseAll({{reason, request.key}}, words);
    }
    return withSettings(words, [&](const Json& settings) {
        if (setting == nullptr) {
            return printAll(settings);
        }
        const Json* value = settings.find(setting->key);
        return value ? Terminal::print(SettingsDocument::plain(*value) + "\n")
                     : Asking::report({RunningInstance::Result::strange, {}}, words);
    });
}

int set(const CommandLine::Set& request, const Words& words) {
    const auto text = SettingsDocument::assigning(request.key, request.value);
    if (const auto* fault = std::get_if<Fault>(&text)) {
        return refuseAll({*fault}, words);
    }
    return takeOver(std::get<std::string>(text), words);
}

int exportThem(const CommandLine::Export& request, const Words& words) {
    return withSettings(words, [&](const Json& settings) {
        const Json shown = request.isWhole ? settings : SettingsDocument::withoutDefaults(settings);
        return Terminal::print(shown.print(Json::Layout::pretty) + "\n");
    });
}

int import(const CommandLine::Import& request, const Words& words) {
    const ReadResult read = request.file.empty() ? readStandardInput() : readFile(request.file);
    if (read.error == std::errc::file_too_large) {
        return refuseAll({{SettingsDocument::Reason::tooLong, {}}}, words);
    }
    if (!read) {
        const std::string name = request.file.empty() ? words.translate("CommandLine", "standard input")
                                                      : TerminalText::withoutControls(request.file);
        return Terminal::refuse(Words::filled(words.translate("CommandLine", "Can't read %1: %2."),
                                              {name, FileReasons::text(read.error).toStdString()}));
    }
    return takeOver(read.bytes, words);
}

} // namespace veslora::SettingsWords
