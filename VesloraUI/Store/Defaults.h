// SPDX-License-Identifier: MIT
// The settings store: what the user chose, kept in one small JSON file, and what holds where nobody chose.
// Main thread only.
#pragma once

#include "VesloraCore/Text/Json.h"
#include "VesloraUI/Platform/DirectoryWatcher.h"
#include "VesloraUI/Platform/Files.h"
#include "VesloraUI/Platform/Scheduler.h"
#include "VesloraUI/Platform/Task.h"
#include "VesloraUI/Platform/Trouble.h"
#include "VesloraUI/Store/Setting.h"

#include <QObject>

#include <initializer_list>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

namespace veslora {

/// Reads never fail: where the file has no value of the wanted type at a key, the registered default counts,
/// and without one false, 0 or nothing. What another program writes into the file is taken over as it
/// happens, and keys that nobody here knows stay in it.
class Defaults : public QObject {
    Q_OBJECT

  public:
    using Value = Setting::Value;
    using Change = Setting::Change;

    /// The store in "settings.json" of `directory`, or in "settings.<suite>.json" for a private one. The
    /// directory is made if it is missing; a file is made only by the first write.
    Defaults(Files& files, DirectoryWatcher& watcher, std::string directory, const std::string& suite = {});
    /// The store in "settings.json" as it is now, for a process that asks or changes something and ends. It
    /// follows no change, and makes the directory only for the first write.
    Defaults(Files& files, std::string directory);
    /// Writes what waits to be written.
    ~Defaults() override;
    Q_DISABLE_COPY_MOVE(Defaults)

    /// Between two writes that the scheduler paces, in seconds.
    static constexpr double pace = 0.5;
    /// From now on a change that soon follows another is written with all that come until then: each write
    /// waits for the disk, and a slider that is dragged asks for one with each of its steps. Until this is
    /// called, every change is written at once. The scheduler must outlive this.
    void paceWrites(Scheduler& scheduler) { m_scheduler = &scheduler; }

    /// Defaults live in memory alone, so that a later version may change them for users who never touched a
    /// setting.
    void registerDefaults(std::span<const Change> values);
    void registerDefaults(std::initializer_list<Change> values) {
        registerDefaults(std::span(values.begin(), values.size()));
    }

    /// What a read of the registered default's type gives. The key must be registered.
    [[nodiscard]] Value value(std::string_view key) const;

    [[nodiscard]] bool boolValue(std::string_view key) const;
    [[nodiscard]] double doubleValue(std::string_view key) const;
    /// Whether there was a file at the last look, also one that could not be read.
    [[nodiscard]] bool hasFile() const { return m_text.has_value() || m_readError; }

    /// A fraction is cut off.
    [[nodiscard]] int integerValue(std::string_view key) const;
    [[nodiscard]] std::optional<std::string> stringValue(std::string_view key) const;

    /// Stores a value and emits `changed`, unless the key reads as that already. Where the disk refuses, the
    /// value still holds until the program ends, and the next write tries again. A number that is not finite
    /// is ignored.
    void set(std::string_view key, bool value);
    void set(std::string_view key, double value);
    void set(std::string_view key, int value);
    void set(std::string_view key, std::string_view value);
    /// Or else a literal would count as a truth value.
    void set(std::string_view key, const char* value) { set(key, std::string_view(value)); }
    /// The same for many values, in one step: they are written together, and `changed` comes once.
    void set(std::span<const Change> changes);

    /// Writes at once what waits to be written. Why what was set is not on the disk; no error where it is.
    std::error_code writeNow();

  signals:
    /// Some value was written, here or by another program. The same value once more is no change.
    void changed();

  private:
    template <class Stored>
    [[nodiscard]] const Stored* registered(std::string_view key) const;
    /// Whether a read of that value's type gives it already.
    [[nodiscard]] bool isReadAs(std::string_view key, const Value& value) const;

    bool load();
    void tellOfReading(const std::error_code& error);
    void tellOfOddValues() const;
    void makeDirectory();
    void saveInTime();
    void paceIsOver();
    void save();
    [[nodiscard]] std::error_code write(const std::string& target, const std::string& text);
    [[nodiscard]] std::error_code keepDamaged(const std::string& target);
    void watch();
    void directoryChanged();

    Files& m_files;
    DirectoryWatcher* m_watcher = nullptr; ///< null where no change is followed
    std::string m_directory;
    std::string m_path;
    std::map<std::string, Value, std::less<>> m_registered;
    Json m_values;
    Json m_unsaved;                    ///< what the disk refused so far, by key
    std::optional<std::string> m_text; ///< the file as last seen; absent when there was none
    /// Of the last look at the file: one that can't be read must not be replaced either.
    std::error_code m_readError;
    std::error_code m_writeError; ///< of the last attempt to write
    bool m_isDamaged = false;     ///< the file as last seen holds no settings
    std::unique_ptr<DirectoryWatch> m_watch;
    Scheduler* m_scheduler = nullptr;
    Task m_pacing;            ///< there until another write is due
    bool m_isWaiting = false; ///< something was changed meanwhile
    Trouble m_readTrouble;
    Trouble m_directoryTrouble;
    Trouble m_writeTrouble;
};

} // namespace veslora
