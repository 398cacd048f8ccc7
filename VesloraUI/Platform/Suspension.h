// SPDX-License-Identifier: MIT
// The seam for the machine's sleep. Waits and repetitions of the scheduler need none of it: they count the
// time asleep.
#pragma once

#include <QObject>

namespace veslora {

/// Silent where nothing tells of it.
class Suspension : public QObject {
    Q_OBJECT

  signals:
    /// The machine is about to sleep; nothing waits for what is done about it.
    void willSleep();

    /// The machine is awake again. It may come without `willSleep`.
    void didWake();
};

} // namespace veslora
