// SPDX-License-Identifier: MIT
// The metronome's sounds, ready to be picked from; the one that is picked is heard, on a metronome of its
// own.
#pragma once

#include "VesloraUI/Metronome/MetronomeModel.h"
#include "VesloraUI/Support/Presenter.h"

#include <QList>
#include <QString>

namespace veslora {

class Defaults;

class MetronomeSettingsPresenter : public veslora::Presenter {
    Q_OBJECT
    QML_ELEMENT
    /// What plays the samples: never the one that the user may have running.
    Q_PROPERTY(veslora::MetronomeModel* previewer MEMBER m_previewer REQUIRED FINAL)
    /// As people read them.
    Q_PROPERTY(QList<QString> sounds READ sounds CONSTANT FINAL)
    /// The place of the stored one among them; a text that names none stands for the first.
    Q_PROPERTY(int sound READ sound NOTIFY changed FINAL)

  public:
    using Presenter::Presenter;

    [[nodiscard]] static QList<QString> sounds();
    [[nodiscard]] int sound() const { return m_sound; }

    /// Stores a sound by its place and plays a sample of it, unless it is the stored one or silence. A place
    /// that there is not does nothing.
    Q_INVOKABLE void chooseSound(int place);

  protected:
    void start() override;
    void read() override;

  private:
    MetronomeModel* m_previewer = nullptr;
    Defaults* m_settings = nullptr;
    int m_sound = 0;
};

} // namespace veslora
