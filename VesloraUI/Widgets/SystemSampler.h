// SPDX-License-Identifier: MIT
// How busy the machine is, read at an interval, but only while somebody looks. Main thread only.
#pragma once

#include "VesloraUI/Platform/Scheduler.h"
#include "VesloraUI/Platform/SystemReadings.h"

#include <QObject>
#include <QQmlEngine>

#include <cstdint>
#include <functional>
#include <optional>

namespace veslora {

class SystemSampler : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")

  public:
    static constexpr double usualInterval = 2; ///< seconds

    using Sample = std::function<void(SystemSampler&)>;

    /// Reads all that the machine tells, every two seconds.
    SystemSampler(Scheduler& scheduler, SystemReadings& readings);
    /// Calls `sample`, which takes this, every `interval` seconds instead.
    SystemSampler(Scheduler& scheduler, SystemReadings& readings, double interval, Sample sample);

    /// Absent until two counts in a row were read.
    [[nodiscard]] const std::optional<CPUUsage>& cpu() const { return m_cpu; }
    /// Bytes; 0 at first.
    [[nodiscard]] std::uint64_t memoryUsed() const { return m_memoryUsed; }
    /// Bytes of memory that the machine has, as it was when this was made; 0 when that could not be told.
    [[nodiscard]] std::uint64_t memoryTotal() const { return m_memoryTotal; }
    /// Absent at first, and on a machine without one.
    [[nodiscard]] const std::optional<BatteryReading>& battery() const { return m_battery; }
    /// Bytes; 0 at first, and never read on a machine with a battery.
    [[nodiscard]] std::uint64_t diskUsed() const { return m_diskUsed; }
    [[nodiscard]] std::uint64_t diskTotal() const { return m_diskTotal; }

    /// To be called in pairs by a view that shows the figures. The first one samples at once and begins the
    /// interval; when the last one goes nothing is read any more, and the processor's share is forgotten, so
    /// that none is ever taken across a gap.
    void viewAppeared();
    void viewDisappeared();

    /// After a time in which the counters said nothing, such as sleep: reads all again, if anybody looks, and
    /// takes no difference across that time.
    void startAgain();

    /// One pass. A reading that fails keeps its last value, but for counts of the processor that give no
    /// share: those clear it.
    void readSystem();

  signals:
    /// Any of the figures.
    void changed();

  private:
    void begin();
    void readTicks();
    void readMemory();
    void readDisk();

    Scheduler& m_scheduler;
    SystemReadings& m_readings;
    double m_interval;
    Sample m_sample;
    int m_viewers = 0;
    Task m_loop;
    std::optional<CPUTicks> m_previousTicks;
    std::optional<CPUUsage> m_cpu;
    std::uint64_t m_memoryUsed = 0;
    std::uint64_t m_memoryTotal;
    std::optional<BatteryReading> m_battery;
    std::uint64_t m_diskUsed = 0;
    std::uint64_t m_diskTotal = 0;
};

} // namespace veslora
