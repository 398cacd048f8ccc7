// SPDX-License-Identifier: MIT
// The seam for how the desktop wants programs to look: light or dark, contrast, motion, the size of text.
// Main thread only.
#pragma once

#include "VesloraUI/Platform/Observable.h"

#include <QObject>

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace veslora {

enum class ColorScheme : std::uint8_t {
    none, ///< no preference
    light,
    dark,
};

/// What a desktop asks of its programs. As it is made: one that never said anything.
struct DesktopAppearance {
    /// Whether the desktop was heard at all. One that was and prefers no colours means its usual ones, which
    /// are light.
    bool isTold = false;
    ColorScheme colorScheme = ColorScheme::none;
    bool highContrast = false;
    bool reducedMotion = false; ///< nothing is to move that need not
    double textScale = 1;       ///< of every text's size; within the bounds below

    static constexpr double smallestTextScale = 0.5;
    static constexpr double largestTextScale = 3;
    /// The scale that is taken for one that was told: within the bounds, and 1 for what is no finite number.
    [[nodiscard]] static double boundedTextScale(double scale) {
        return std::isfinite(scale) ? std::clamp(scale, smallestTextScale, largestTextScale) : 1;
    }

    bool operator==(const DesktopAppearance&) const = default;
};

class Appearance : public QObject {
    Q_OBJECT

  public:
    /// Begins to learn it, and goes on. Until then, and for a moment afterwards, nothing is told; it never
    /// waits. To be called once.
    virtual void follow() = 0;

    [[nodiscard]] const DesktopAppearance& current() const { return m_current; }

  signals:
    void changed();

  protected:
    void set(const DesktopAppearance& appearance) {
        assign(this, m_current, appearance, &Appearance::changed);
    }

  private:
    DesktopAppearance m_current;
};

} // namespace veslora
