// SPDX-License-Identifier: MIT
// The length that the idle timer offers, ready for display.
#pragma once

#include "VesloraUI/Support/Presenter.h"
#include "VesloraUI/Timer/TimerModel.h"

#include <QList>
#include <QString>

namespace veslora {

class TimerPickerPresenter : public veslora::Presenter {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(veslora::TimerModel* timer MEMBER m_timer REQUIRED FINAL)
    Q_PROPERTY(bool isWide MEMBER m_isWide REQUIRED FINAL)
    Q_PROPERTY(QString caption READ caption NOTIFY changed FINAL)
    /// Whether there is room to tell how the length is set.
    Q_PROPERTY(bool hasHint READ hasHint NOTIFY changed FINAL)
    Q_PROPERTY(double seconds READ seconds NOTIFY changed FINAL)
    /// How far up the ladder of lengths it is.
    Q_PROPERTY(double fraction READ fraction NOTIFY changed FINAL)
    Q_PROPERTY(int segments READ segments CONSTANT FINAL)
    Q_PROPERTY(QList<int> presets READ presets CONSTANT FINAL)

  public:
    using Presenter::Presenter;

    [[nodiscard]] QString caption() const { return m_shown.caption; }
    [[nodiscard]] bool hasHint() const { return m_shown.hasHint; }
    [[nodiscard]] double seconds() const { return m_shown.seconds; }
    [[nodiscard]] double fraction() const { return m_shown.fraction; }
    [[nodiscard]] static int segments();
    /// Minutes.
    [[nodiscard]] static QList<int> presets();

    Q_INVOKABLE [[nodiscard]] static QString presetHelp(int minutes);

  protected:
    void start() override;
    void read() override;

  private:
    struct Shown {
        QString caption;
        bool hasHint = true;
        double seconds = 0;
        double fraction = 0;
        bool operator==(const Shown&) const = default;
    };

    TimerModel* m_timer = nullptr;
    bool m_isWide = false;
    Shown m_shown;
};

} // namespace veslora
