// SPDX-License-Identifier: MIT
#include "VesloraUI/Settings/UpdaterModel.h"

#include "VesloraUI/Platform/Observable.h"
#include "VesloraUI/Platform/Updating.h"

namespace veslora {

UpdaterModel::UpdaterModel(Updating& updater)
    : m_updater(updater), m_canCheckForUpdates(updater.canCheckForUpdates()),
      m_automaticallyChecks(updater.automaticallyChecksForUpdates()) {
    m_updater.onCanCheckForUpdatesChange = [this](bool canCheck) {
        assign(this, m_canCheckForUpdates, canCheck, &UpdaterModel::canCheckForUpdatesChanged);
    };
    m_updater.onAutomaticallyChecksForUpdatesChange = [this](bool isOn) { setAutomaticallyChecks(isOn); };
}

UpdaterModel::~UpdaterModel() {
    m_updater.onCanCheckForUpdatesChange = nullptr;
    m_updater.onAutomaticallyChecksForUpdatesChange = nullptr;
}

bool UpdaterModel::isAvailable() const {
    return m_updater.isAvailable();
}

void UpdaterModel::setAutomaticallyChecks(bool isOn) {
    assign(this, m_automaticallyChecks, isOn, &UpdaterModel::automaticallyChecksChanged);
    if (m_updater.automaticallyChecksForUpdates() != isOn) {
        m_updater.setAutomaticallyChecksForUpdates(isOn);
    }
}

void UpdaterModel::checkForUpdates() {
    m_updater.checkForUpdates();
}

} // namespace veslora
