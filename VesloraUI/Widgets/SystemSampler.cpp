// SPDX-License-Identifier: MIT
#include "VesloraUI/Widgets/SystemSampler.h"

#include "VesloraUI/Platform/Observable.h"

#include <algorithm>

namespace veslora {

SystemSampler::SystemSampler(Scheduler& scheduler, SystemReadings& readings)
    : SystemSampler(scheduler, readings, usualInterval,
                    [](SystemSampler& sampler) { sampler.readSystem(); }) {}

SystemSampler::SystemSampler(Scheduler& scheduler, SystemReadings& readings, double interval, Sample sample)
    : m_scheduler(scheduler), m_readings(readings), m_interval(interval), m_sample(std::move(sample)),
      m_memoryTotal(readings.physicalMemory().value_or(0)) {}

void SystemSampler::viewAppeared() {
    if (++m_viewers == 1) {
        begin();
    }
}

void SystemSampler::begin() {
    m_sample(*this);
    m_loop = m_scheduler.every(m_interval, Precision::coarse, [this] { m_sample(*this); });
}

void SystemSampler::viewDisappeared() {
    m_viewers = std::max(m_viewers - 1, 0);
    if (m_viewers == 0) {
        m_loop.cancel();
        m_previousTicks.reset();
        assign(this, m_cpu, std::nullopt, &SystemSampler::changed);
    }
}

void SystemSampler::startAgain() {
    if (m_viewers > 0) {
        m_previousTicks.reset();
        begin();
    }
}

void SystemSampler::readSystem() {
    readTicks();
    readMemory();
    assign(this, m_battery, m_readings.battery(), &SystemSampler::changed);
    if (!m_battery) {
        readDisk();
    }
}

void SystemSampler::readTicks() {
    const auto ticks = m_readings.ticks();
    if (!ticks) {
        return;
    }
    if (m_previousTicks) {
        assign(this, m_cpu, MeterMath::cpuUsage(*m_previousTicks, *ticks), &SystemSampler::changed);
    }
    m_previousTicks = ticks;
}

void SystemSampler::readMemory() {
    const auto pages = m_readings.memoryPages();
    const auto used =
        pages ? MeterMath::memoryUsedBytes(pages->internalPages, pages->purgeablePages, pages->wiredPages,
                                           pages->compressedPages, pages->pageSize)
              : std::nullopt;
    if (used) {
        assign(this, m_memoryUsed, *used, &SystemSampler::changed);
    }
}

void SystemSampler::readDisk() {
    if (const auto disk = m_readings.disk()) {
        const std::uint64_t used = disk->total > disk->available ? disk->total - disk->available : 0;
        assign(this, m_diskUsed, used, &SystemSampler::changed);
        assign(this, m_diskTotal, disk->total, &SystemSampler::changed);
    }
}

} // namespace veslora
