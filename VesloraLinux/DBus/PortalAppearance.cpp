// SPDX-License-Identifier: MIT
#include "VesloraLinux/DBus/PortalAppearance.h"

#include <QDBusVariant>

namespace veslora {
namespace {

const QString commonGroup = QStringLiteral("org.freedesktop.appearance");
const QString gnomeGroup = QStringLiteral("org.gnome.desktop.interface");
const QString gnomeAccessGroup = QStringLiteral("org.gnome.desktop.a11y.interface");
const QString kdeGroup = QStringLiteral("org.kde.kdeglobals.KDE");

/// Older portals wrap a value twice.
QVariant unwrapped(QVariant value) {
    constexpr int most = 3;
    for (int i = 0; i < most && value.metaType() == QMetaType::fromType<QDBusVariant>(); ++i) {
        value = value.value<QDBusVariant>().variant();
    }
    return value;
}

std::optional<unsigned int> number(const QVariant& value) {
    return value.typeId() == QMetaType::UInt ? std::optional(value.toUInt()) : std::nullopt;
}

std::optional<bool> truth(const QVariant& value) {
    return value.typeId() == QMetaType::Bool ? std::optional(value.toBool()) : std::nullopt;
}

std::optional<double> fraction(const QVariant& value) {
    return value.typeId() == QMetaType::Double ? std::optional(value.toDouble()) : std::nullopt;
}

std::optional<ColorScheme> colorScheme(const QVariant& value) {
    const auto told = number(value);
    if (!told) {
        return std::nullopt;
    }
    return *told == 1 ? ColorScheme::dark : *told == 2 ? ColorScheme::light : ColorScheme::none;
}

std::optional<bool> isOne(const QVariant& value) {
    const auto told = number(value);
    return told ? std::optional(*told == 1) : std::nullopt;
}

/// KDE tells its numbers as text.
std::optional<bool> moves(const QVariant& durationFactor) {
    bool isNumber = false;
    const double factor = durationFactor.toDouble(&isNumber);
    return isNumber ? std::optional(factor != 0) : std::nullopt;
}

} // namespace

const QStringList& PortalAppearance::namespaces() {
    static const QStringList all{commonGroup, gnomeGroup, gnomeAccessGroup, kdeGroup};
    return all;
}

bool PortalAppearance::take(const QString& group, const QString& key, const QVariant& value) {
    const QVariant told = unwrapped(value);
    if (group == commonGroup && key == QLatin1String("color-scheme")) {
        m_colorScheme = colorScheme(told);
    } else if (group == commonGroup && key == QLatin1String("contrast")) {
        m_higherContrast = isOne(told);
    } else if (group == commonGroup && key == QLatin1String("reduced-motion")) {
        m_reducedMotion = isOne(told);
    } else if (group == gnomeGroup && key == QLatin1String("enable-animations")) {
        m_gnomeAnimations = truth(told);
    } else if (group == gnomeGroup && key == QLatin1String("text-scaling-factor")) {
        m_textScale = fraction(told);
    } else if (group == gnomeAccessGroup && key == QLatin1String("high-contrast")) {
        m_gnomeHighContrast = truth(told);
    } else if (group == kdeGroup && key == QLatin1String("AnimationDurationFactor")) {
        m_kdeAnimations = moves(told);
    } else {
        return false;
    }
    return true;
}

bool PortalAppearance::isTold() const {
    return m_colorScheme || m_higherContrast || m_gnomeHighContrast || m_reducedMotion || m_gnomeAnimations ||
           m_kdeAnimations || m_textScale;
}

DesktopAppearance PortalAppearance::appearance() const {
    DesktopAppearance appearance;
    appearance.isTold = isTold();
    appearance.colorScheme = m_colorScheme.value_or(ColorScheme::none);
    appearance.highContrast = m_higherContrast.value_or(false) || m_gnomeHighContrast.value_or(false);
    appearance.reducedMotion = m_reducedMotion.value_or(false) || !m_gnomeAnimations.value_or(true) ||
                               !m_kdeAnimations.value_or(true);
    appearance.textScale = DesktopAppearance::boundedTextScale(m_textScale.value_or(1));
    return appearance;
}

} // namespace veslora
