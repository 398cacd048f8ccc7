// SPDX-License-Identifier: MIT
// The row of the settings in which the user pauses alerts and ends that. A pause by the desktop is none of
// its business.
#pragma once

#include "VesloraUI/Platform/Task.h"
#include "VesloraUI/Support/LocalCalendar.h"
#include "VesloraUI/Support/Presenter.h"

#include <QString>

namespace veslora {

class AlertPausePresenter : public veslora::Presenter {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool isPaused READ isPaused NOTIFY changed FINAL)
    Q_PROPERTY(QString detail READ detail NOTIFY changed FINAL)

  public:
    using Presenter::Presenter;

    [[nodiscard]] bool isPaused() const { return m_shown.isPaused; }
    [[nodiscard]] QString detail() const { return m_shown.detail; }

    Q_INVOKABLE void pauseForAnHour();
    Q_INVOKABLE void pauseUntilTomorrow();
    Q_INVOKABLE void resume();

    /// When a pause is over, told to a reader at `now`: by its time alone on the same day.
    [[nodiscard]] static QString textOf(Timestamp until, Timestamp now, const Calendar& calendar);

  protected:
    void start() override;
    void read() override;

  private:
    struct Shown {
        bool isPaused = false;
        QString detail;
        bool operator==(const Shown&) const = default;
    };

    LocalCalendar m_calendar;
    Shown m_shown;
    Task m_midnight;
};

} // namespace veslora
