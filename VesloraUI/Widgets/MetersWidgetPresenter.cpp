// SPDX-License-Identifier: MIT
#include "VesloraUI/Widgets/MetersWidgetPresenter.h"

#include "VesloraCore/System/MeterMath.h"
#include "VesloraUI/Support/ReadersWords.h"

#include <string>

namespace veslora {

namespace {

MeterRow makeRow(const QString& label, const MeterReading& reading, const std::string& detail) {
    return {label,
            label,
            reading.fraction.value_or(0),
            QString::fromStdString(MeterMath::percent(reading.fraction)),
            QString::fromStdString(detail),
            MeterMath::isUrgent(reading)};
}

/// "9.8 / 16 GB".
std::string ofGigabytes(const std::string& used, const std::string& total) {
    return used + " / " + total + " GB";
}

MeterRow cpuRow(const SystemSampler& sampler) {
    const auto& cpu = sampler.cpu();
    const auto share = cpu ? std::optional(cpu->total()) : std::nullopt;
    return makeRow(MetersWidgetPresenter::tr("CPU"), {MeterKind::cpu, share},
                   MeterMath::cpuDetail(cpu, readersWords()));
}

MeterRow memoryRow(const SystemSampler& sampler) {
    return makeRow(MetersWidgetPresenter::tr("MEM"),
                   {MeterKind::memory, MeterMath::fraction(sampler.memoryUsed(), sampler.memoryTotal())},
                   ofGigabytes(MeterMath::memoryGigabytes(sampler.memoryUsed(), readersWords()),
                               MeterMath::memoryGigabytes(sampler.memoryTotal(), readersWords())));
}

MeterRow batteryRow(const BatteryReading& battery) {
    return makeRow(MetersWidgetPresenter::tr("BAT"),
                   {MeterKind::battery, battery.percent, battery.isCharging},
                   MeterMath::batteryDetail(battery, readersWords()));
}

MeterRow diskRow(const SystemSampler& sampler) {
    return makeRow(MetersWidgetPresenter::tr("DSK"),
                   {MeterKind::disk, MeterMath::fraction(sampler.diskUsed(), sampler.diskTotal())},
                   ofGigabytes(MeterMath::diskGigabytes(sampler.diskUsed()),
                               MeterMath::diskGigabytes(sampler.diskTotal())));
}

} // namespace

MetersWidgetPresenter::~MetersWidgetPresenter() {
    setOnScreen(false);
}

void MetersWidgetPresenter::start() {
    follow(m_sampler.data(), &SystemSampler::changed);
    look();
}

void MetersWidgetPresenter::setOnScreen(bool isOnScreen) {
    m_isOnScreen = isOnScreen;
    if (isComplete()) {
        look();
    }
}

/// Appears to the sampler and disappears from it in pairs.
void MetersWidgetPresenter::look() {
    if (m_isViewer == m_isOnScreen || !m_sampler) {
        return;
    }
    m_isViewer = m_isOnScreen;
    if (m_isViewer) {
        m_sampler->viewAppeared();
    } else {
        m_sampler->viewDisappeared();
    }
}

void MetersWidgetPresenter::read() {
    m_rows.assign(freshRows());
}

std::vector<MeterRow> MetersWidgetPresenter::freshRows() const {
    const bool hasBattery = MeterMath::secondReading(m_sampler->battery()) == MeterKind::battery;
    return {cpuRow(*m_sampler), memoryRow(*m_sampler),
            hasBattery ? batteryRow(*m_sampler->battery()) : diskRow(*m_sampler)};
}

} // namespace veslora
