// SPDX-License-Identifier: MIT
// The seam for the pointer, wherever on the desktop it is.
#pragma once

#include "VesloraCore/Island/Geometry.h"
#include "VesloraUI/Platform/Screens.h"

#include <QObject>

#include <optional>

namespace veslora {

class Pointer : public QObject {
    Q_OBJECT

  public:
    /// Where the pointer is in the space of `screen`. Absent when it is on another screen or can't be told,
    /// which counts as outside everything.
    [[nodiscard]] virtual std::optional<Point> positionOn(const ScreenInfo& screen) const = 0;

    [[nodiscard]] virtual bool isButtonDown() const = 0;

    /// Starts and stops `moved`. Listening costs a wake-up for each frame of movement.
    virtual void setTracking(bool isTracking) = 0;

    /// Whether `pressedOutside` can ever be told here. Not where a window system tells a program of nothing
    /// but its own windows.
    [[nodiscard]] virtual bool hearsPressesOutside() const = 0;

    /// Starts and stops `pressedOutside`, where it can be told.
    virtual void setWatchingPresses(bool isWatching) = 0;

  signals:
    /// The pointer moved, with or without a button held; at most once a frame.
    void moved();

    /// A button whose press the panel had taken went up, wherever the pointer is by then; told after the
    /// panel's content has dealt with it.
    void released();

    /// A button was pressed over something that is not the program's own panel.
    void pressedOutside();
};

} // namespace veslora
