// SPDX-License-Identifier: MIT
#include "VesloraUI/Store/Defaults.h"

#include "VesloraCore/Overloaded.h"
#include "VesloraUI/Platform/Logs.h"
#include "VesloraUI/Store/SettingJson.h"

#include <array>

namespace veslora {

namespace {

constexpr std::uint32_t directoryMode = 0700;
constexpr WriteOptions privately{.mode = 0600, .sync = Sync::yes};

std::string fileName(const std::string& suite) {
    return suite.empty() ? "settings.json" : "settings." + suite + ".json";
}

} // namespace

Defaults::Defaults(Files& files, DirectoryWatcher& watcher, std::string directory, const std::string& suite)
    : m_files(files), m_watcher(&watcher), m_directory(std::move(directory)),
      m_path(m_directory + "/" + fileName(suite)), m_values(Json::makeObject()),
      m_unsaved(Json::makeObject()) {
    makeDirectory();
    watch();
    load();
    if (!hasFile()) {
        qCInfo(Logs::settings, "there is no %s", m_path.c_str());
    }
}

Defaults::Defaults(Files& files, std::string directory)
    : m_files(files), m_directory(std::move(directory)), m_path(m_directory + "/" + fileName({})),
      m_values(Json::makeObject()), m_unsaved(Json::makeObject()) {
    load();
}

Defaults::~Defaults() {
    if (m_isWaiting) {
        load();
        save();
    }
}

void Defaults::registerDefaults(std::span<const Change> values) {
    for (const auto& [key, value] : values) {
        m_registered.insert_or_assign(std::string(key), value);
    }
    tellOfOddValues();
}

template <class Stored>
const Stored* Defaults::registered(std::string_view key) const {
    const auto found = m_registered.find(key);
    return found == m_registered.end() ? nullptr : std::get_if<Stored>(&found->second);
}

bool Defaults::boolValue(std::string_view key) const {
    const Json* stored = m_values.find(key);
    const bool* fallback = registered<bool>(key);
    const auto value = stored != nullptr ? stored->boolean() : std::nullopt;
    return value.value_or(fallback != nullptr && *fallback);
}

double Defaults::doubleValue(std::string_view key) const {
    const Json* stored = m_values.find(key);
    const double* fallback = registered<double>(key);
    const auto value = stored != nullptr ? stored->number() : std::nullopt;
    return value.value_or(fallback != nullptr ? *fallback : 0);
}

int Defaults::integerValue(std::string_view key) const {
    const Json* stored = m_values.find(key);
    const int* fallback = registered<int>(key);
    const auto value = stored != nullptr ? stored->integer32() : std::nullopt;
    return value.value_or(fallback != nullptr ? *fallback : 0);
}

std::optional<std::string> Defaults::stringValue(std::string_view key) const {
    if (const std::string* stored = m_values.stringAt(key)) {
        return *stored;
    }
    const std::string* fallback = registered<std::string>(key);
    return fallback != nullptr ? std::optional(*fallback) : std::nullopt;
}

Defaults::Value Defaults::value(std::string_view key) const {
    const Value& standard = m_registered.find(key)->second;
    const Json* stored = m_values.find(key);
    return (stored != nullptr ? SettingJson::read(*stored, standard) : std::nullopt).value_or(standard);
}

void Defaults::set(std::string_view key, bool value) {
    set(std::array{Change(key, value)});
}

void Defaults::set(std::string_view key, double value) {
    set(std::array{Change(key, value)});
}

void Defaults::set(std::string_view key, int value) {
    set(std::array{Change(key, value)});
}

void Defaults::set(std::string_view key, std::string_view value) {
    set(std::array{Change(key, std::string(value))});
}

bool Defaults::isReadAs(std::string_view key, const Value& value) const {
    return std::visit(Overloaded{[&](bool flag) { return boolValue(key) == flag; },
                                 [&](int integer) { return integerValue(key) == integer; },
                                 [&](double number) { return doubleValue(key) == number; },
                                 [&](const std::string& text) { return stringValue(key) == text; }},
                      value);
}

void Defaults::set(std::span<const Change> changes) {
    // Another program may have written since the last event: its other values must not be lost.
    bool differs = load();
    bool isNew = false;
    for (const auto& [key, value] : changes) {
        auto json = SettingJson::make(value);
        if (json && !isReadAs(key, value)) {
            m_unsaved.set(key, *json);
            m_values.set(key, *std::move(json));
            isNew = true;
        }
    }
    if (isNew) {
        saveInTime();
        differs = true;
    }
    if (differs) {
        emit changed();
    }
}

std::error_code Defaults::writeNow() {
    if (m_unsaved.members().empty()) {
        return {};
    }
    m_isWaiting = false;
    const bool differs = load();
    save();
    if (differs) {
        emit changed();
    }
    return m_unsaved.members().empty() ? std::error_code() : m_writeError;
}

/// Takes over what the file holds now. True when the values differ. A file that can't be read, or that holds
/// no settings, leaves the last good ones.
bool Defaults::load() {
    ReadResult file = m_files.read(m_path, {.links = Links::follow});
    const bool isMissing = file.error == std::errc::no_such_file_or_directory;
    m_readError = isMissing ? std::error_code() : file.error;
    tellOfReading(m_readError);
    auto text = isMissing ? std::nullopt : std::optional(std::move(file.bytes));
    if (m_readError || text == m_text) {
        return false;
    }
    m_text = std::move(text);
    auto parsed = m_text ? Json::parse(*m_text) : Json::makeObject();
    m_isDamaged = !parsed || !parsed->isObject();
    if (m_isDamaged) {
        qCWarning(Logs::settings, "%s holds no settings, so the earlier ones apply", m_path.c_str());
        return false;
    }
    qCInfo(Logs::settings, m_text ? "read %s" : "there is no %s", m_path.c_str());
    for (const Json::Member& member : m_unsaved.members()) {
        parsed->set(member.key, member.value);
    }
    const bool differs = std::exchange(m_values, *parsed) != *parsed;
    tellOfOddValues();
    return differs;
}

void Defaults::tellOfReading(const std::error_code& error) {
    if (m_readTrouble.begins(error)) {
        qCWarning(Logs::settings, "can't read %s: %s", m_path.c_str(), error.message().c_str());
    }
}

/// Names no value: only which keys the registered default counts for.
void Defaults::tellOfOddValues() const {
    if (!Logs::settings().isWarningEnabled()) {
        return;
    }
    for (const auto& [key, value] : m_registered) {
        const Json* stored = m_values.find(key);
        if (stored != nullptr && !SettingJson::read(*stored, value)) {
            qCWarning(Logs::settings, "%s in %s is of another type", key.c_str(), m_path.c_str());
        }
    }
}

void Defaults::makeDirectory() {
    const std::error_code error = m_files.makeDirectory(m_directory, directoryMode);
    if (m_directoryTrouble.begins(error)) {
        qCWarning(Logs::settings, "can't make %s: %s", m_directory.c_str(), error.message().c_str());
    }
}

void Defaults::saveInTime() {
    if (m_pacing.isActive()) {
        m_isWaiting = true;
        return;
    }
    save();
    if (m_scheduler != nullptr) {
        m_pacing = m_scheduler->after(pace, [this] { paceIsOver(); });
    }
}

void Defaults::paceIsOver() {
    m_pacing = Task();
    if (std::exchange(m_isWaiting, false)) {
        // What another program wrote meanwhile stays in the file.
        const bool differs = load();
        saveInTime();
        if (differs) {
            emit changed();
        }
    }
}

void Defaults::save() {
    makeDirectory();
    watch();
    const std::string target = m_files.resolve(m_path);
    std::string text = m_values.print(Json::Layout::pretty) + "\n";
    m_writeError = write(target, text);
    if (!m_writeError) {
        m_text = std::move(text);
        m_isDamaged = false;
        m_unsaved = Json::makeObject();
    }
}

std::error_code Defaults::write(const std::string& target, const std::string& text) {
    if (m_readError) {
        return m_readError;
    }
    if (m_isDamaged) {
        if (const std::error_code error = keepDamaged(target)) {
            return error;
        }
    }
    const std::error_code error = m_files.write(target, text, privately);
    if (m_writeTrouble.begins(error)) {
        qCWarning(Logs::settings, "can't write %s: %s", target.c_str(), error.message().c_str());
    }
    return error;
}

/// Puts a file that holds no settings aside before it is replaced: it may be a slip of the user's editor.
std::error_code Defaults::keepDamaged(const std::string& target) {
    if (m_text->empty()) {
        return {};
    }
    const std::string aside = target + ".damaged";
    const std::error_code error = m_files.write(aside, *m_text, privately);
    if (error) {
        qCWarning(Logs::settings, "can't put the damaged file aside as %s: %s", aside.c_str(),
                  error.message().c_str());
    } else {
        qCInfo(Logs::settings, "put the damaged file aside as %s", aside.c_str());
    }
    return error;
}

/// Watches the directory, unless that is already done or can't be.
void Defaults::watch() {
    if (m_watcher != nullptr && (!m_watch || !m_watch->isActive())) {
        m_watch = m_watcher->watch(m_directory, DirectoryChanges::any, [this] { directoryChanged(); });
    }
}

void Defaults::directoryChanged() {
    if (load()) {
        emit changed();
    }
}

} // namespace veslora
