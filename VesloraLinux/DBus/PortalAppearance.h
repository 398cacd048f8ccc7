// SPDX-License-Identifier: MIT
// What the desktop's settings portal says of how programs are to look, taken from its keys one by one. A
// value of another type or out of its range says nothing. Main thread only.
#pragma once

#include "VesloraUI/Platform/Appearance.h"

#include <QString>
#include <QStringList>
#include <QVariant>

#include <optional>

namespace veslora {

class PortalAppearance {
  public:
    /// The groups of keys that are looked at, in the portal's own words.
    [[nodiscard]] static const QStringList& namespaces();

    /// Takes in a key's value, of which the bus may have made a variant in a variant. False for a key that
    /// says nothing of the look.
    bool take(const QString& group, const QString& key, const QVariant& value);

    /// Whether the portal knows any of it.
    [[nodiscard]] bool isTold() const;
    [[nodiscard]] DesktopAppearance appearance() const;

  private:
    std::optional<ColorScheme> m_colorScheme;
    // What each of the desktops calls it.
    std::optional<bool> m_higherContrast;
    std::optional<bool> m_gnomeHighContrast;
    std::optional<bool> m_reducedMotion;
    std::optional<bool> m_gnomeAnimations;
    std::optional<bool> m_kdeAnimations;
    std::optional<double> m_textScale;
};

} // namespace veslora
