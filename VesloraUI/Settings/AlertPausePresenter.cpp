// SPDX-License-Identifier: MIT
#include "VesloraUI/Settings/AlertPausePresenter.h"

#include "VesloraUI/Store/AlertPausing.h"
#include "VesloraUI/Support/LocalTime.h"

namespace veslora {

void AlertPausePresenter::start() {
    follow(&environment().pausing(), &AlertPausing::changed);
}

void AlertPausePresenter::read() {
    Scheduler& scheduler = environment().scheduler();
    const auto until = environment().pausing().pausedUntil();
    const Timestamp now = scheduler.now();
    // The end of the day makes another text of it.
    m_midnight = until ? scheduler.at(m_calendar.dayOf(now).end, [this] { refresh(); }) : Task();
    show(m_shown, {.isPaused = until.has_value(),
                   .detail = until ? textOf(*until, now, m_calendar)
                                   : tr("Prompts go straight to their terminals for a while.")});
}

QString AlertPausePresenter::textOf(Timestamp until, Timestamp now, const Calendar& calendar) {
    const DaySpan today = calendar.dayOf(now);
    const QString time = LocalTime::shortTime(until);
    if (today.contains(until)) {
        return tr("Paused until %1.").arg(time);
    }
    if (calendar.dayOf(today.end).contains(until)) {
        return tr("Paused until tomorrow, %1.").arg(time);
    }
    //: A day such as "Sat 21 Nov", and a time of it
    return tr("Paused until %1, %2.").arg(LocalTime::shortDate(until), time);
}

void AlertPausePresenter::pauseForAnHour() {
    environment().pausing().pause(AlertPause::For{AlertPause::hour});
}

void AlertPausePresenter::pauseUntilTomorrow() {
    environment().pausing().pause(AlertPause::UntilTomorrow{});
}

void AlertPausePresenter::resume() {
    environment().pausing().resume();
}

} // namespace veslora
