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

#include <QObject>

#include <functional>
#include <initializer_list>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

namespace veslora {

/// Reads never fail: where the file has no value of the wanted type at a key, the registered default counts,
/// and without one false, 0 or nothing. What another program writes into the file is taken over as it
/// happens, and keys that nobody here knows stay in it.
class Defaults : public QObject {
    Q_OBJECT

  public:
    using Value = std::variant<bool, int, double, std::string>;

    /// The store in "settings.json" of `directory`, or in "settings.<suite>.json" for a private one. The
    /// directory is made if it is missing; a file is made only by the first write.
    Defaults(Files& files, DirectoryWatcher& watcher, std::string directory, const std::string& suite = {});
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
    void registerDefaults(std::initializer_list<std::pair<std::string_view, Value>> values);

    [[nodiscard]] bool boolValue(std::string_view key) const;
    [[nodiscard]] double doubleValue(std::string_view key) const;
    /// Whether there was a file at the last look, also one that could not be read.
    [[nodiscard]] bool hasFile() const { return m_text.has_value() || !m_isReadable; }

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

  signals:
    /// Some value was written, here or by another program. The same value once more is no change.
    void changed();

  private:
    template <class Stored>
    [[nodiscard]] const Stored* registered(std::string_view key) const;
    /// Stores `value` unless `isAlready`, asked after a fresh look at the file, says that it is there.
    void store(std::string_view key, Json value, const std::function<bool()>& isAlready);

    bool load();
    void tellOfReading(const std::error_code& error);
    void tellOfOddValues() const;
    void makeDirectory();
    void saveInTime();
    void paceIsOver();
    void save();
    [[nodiscard]] bool keepDamaged(const std::string& target);
    void watch();
    void directoryChanged();

    Files& m_files;
    DirectoryWatcher& m_watcher;
    std::string m_directory;
    std::string m_path;
    std::map<std::string, Value, std::less<>> m_registered;
    Json m_values;
    Json m_unsaved;                    ///< what the disk refused so far, by key
    std::optional<std::string> m_text; ///< the file as last seen; absent when there was none
    bool m_isReadable = true;          ///< a file that can't be read must not be replaced either
    bool m_isDamaged = false;          ///< the file as last seen holds no settings
    std::unique_ptr<DirectoryWatch> m_watch;
    Scheduler* m_scheduler = nullptr;
    Task m_pacing;            ///< there until another write is due
    bool m_isWaiting = false; ///< something was changed meanwhile
    Trouble m_readTrouble;
    Trouble m_directoryTrouble;
    Trouble m_writeTrouble;
};

} // namespace veslora
