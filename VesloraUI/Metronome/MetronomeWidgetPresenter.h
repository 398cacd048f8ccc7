// SPDX-License-Identifier: MIT
// The metronome's widget, ready for display, without the beat that is heard.
#pragma once

#include "VesloraUI/Metronome/MetronomeModel.h"
#include "VesloraUI/Support/Presenter.h"

#include <QString>

namespace veslora {

class MetronomeWidgetPresenter : public veslora::Presenter {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(veslora::MetronomeModel* metronome MEMBER m_metronome REQUIRED FINAL)
    /// As in "7/8".
    Q_PROPERTY(QString signature READ signature NOTIFY changed FINAL)
    Q_PROPERTY(int beats READ beats NOTIFY changed FINAL)

  public:
    using Presenter::Presenter;

    [[nodiscard]] QString signature() const { return QString::fromStdString(m_shown.display()); }
    [[nodiscard]] int beats() const { return m_shown.beats; }

    /// Makes the metronome that much faster; a tap under the finger tells that it became so.
    Q_INVOKABLE void change(int by);

  protected:
    void start() override { follow(m_metronome, &MetronomeModel::signatureChanged); }
    void read() override { show(m_shown, m_metronome->signature()); }

  private:
    MetronomeModel* m_metronome = nullptr;
    TimeSignature m_shown;
};

} // namespace veslora
