// SPDX-License-Identifier: MIT
// The seam for the desktop's own do-not-disturb: whether its user wants to see no notifications now. Main
// thread only.
#pragma once

#include <QObject>

namespace veslora {

class DoNotDisturb : public QObject {
    Q_OBJECT

  public:
    /// Begins to learn of it, and goes on; it never waits. To be called once.
    virtual void follow() = 0;

    /// False before `follow`, and where no desktop tells of it.
    [[nodiscard]] virtual bool isOn() const = 0;

  signals:
    /// It may be otherwise now.
    void changed();
};

} // namespace veslora
