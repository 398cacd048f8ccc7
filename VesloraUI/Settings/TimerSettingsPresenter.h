// SPDX-License-Identifier: MIT
// The sounds that may end a timer, ready to be picked from; the one that is picked is heard once.
#pragma once

#include "VesloraUI/Support/Presenter.h"

#include <QList>
#include <QString>

namespace veslora {

class Defaults;
class SoundPlaying;

class TimerSettingsPresenter : public veslora::Presenter {
    Q_OBJECT
    QML_ELEMENT
    /// As people read them.
    Q_PROPERTY(QList<QString> sounds READ sounds CONSTANT FINAL)
    /// The place of the stored one among them; -1 for a text that names none of them.
    Q_PROPERTY(int sound READ sound NOTIFY changed FINAL)

  public:
    using Presenter::Presenter;

    [[nodiscard]] static QList<QString> sounds();
    [[nodiscard]] int sound() const { return m_sound; }

    /// Stores a sound by its place and plays it, unless it is the stored one or none at all. A place that
    /// there is not does nothing.
    Q_INVOKABLE void chooseSound(int place);

  protected:
    void start() override;
    void read() override;

  private:
    Defaults* m_settings = nullptr;
    SoundPlaying* m_player = nullptr;
    int m_sound = -1;
};

} // namespace veslora
