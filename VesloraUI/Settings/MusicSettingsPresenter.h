// SPDX-License-Identifier: MIT
// Whether the keys of the music widget reach Spotify, in words.
#pragma once

#include "VesloraUI/Support/Presenter.h"

#include <QString>

namespace veslora {

class AutomationPermission;

class MusicSettingsPresenter : public veslora::Presenter {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString automation READ automation NOTIFY changed FINAL)

  public:
    using Presenter::Presenter;

    [[nodiscard]] QString automation() const { return m_automation; }

  protected:
    void start() override;
    void read() override;

  private:
    AutomationPermission* m_permission = nullptr;
    QString m_automation;
};

} // namespace veslora
