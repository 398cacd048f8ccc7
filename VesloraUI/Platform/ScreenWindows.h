// SPDX-License-Identifier: MIT
// The seam for what an application may fill a screen with. Main thread only.
#pragma once

#include "VesloraCore/Island/FullscreenDetector.h"
#include "VesloraUI/Platform/Screens.h"

#include <QObject>

#include <vector>

namespace veslora {

/// Gives nothing and stays silent where windows of other programs can't be seen.
class ScreenWindows : public QObject {
    Q_OBJECT

  public:
    /// The windows that count on `screen`, topmost first, in that screen's space. Left out are those that
    /// can't be seen there (minimised, on another desktop, beneath a maximised one) and those that fill
    /// nothing: maximised ones never do. A desktop's bar is in the menu bar's layer only while no window that
    /// fills the screen lies above it.
    [[nodiscard]] virtual std::vector<WindowFrame> windowsOn(const ScreenInfo& screen) = 0;

    /// Starts and stops `changed`.
    virtual void setWatching(bool isWatching) = 0;

  signals:
    /// What `windowsOn` gives may have changed, for the screen that it was asked for last; at most once a
    /// frame.
    void changed();
};

} // namespace veslora
