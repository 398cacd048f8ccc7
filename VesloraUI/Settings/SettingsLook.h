// SPDX-License-Identifier: MIT
// Which colours the settings window takes, by the desktop's look.
#pragma once

#include <QColor>
#include <QList>
#include <QObject>
#include <QQmlEngine>

namespace veslora {

class Appearance;
struct DesktopAppearance;

class SettingsLook : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(bool isDark READ isDark NOTIFY changed FINAL)
    Q_PROPERTY(bool isHighContrast READ isHighContrast NOTIFY changed FINAL)

  public:
    explicit SettingsLook(const Appearance& appearance);

    /// Called by the engine for the singleton. The engine must have been given its `ViewEnvironment`.
    static SettingsLook* create(QQmlEngine* engine, QJSEngine* scriptEngine);

    [[nodiscard]] bool isDark() const;
    [[nodiscard]] bool isHighContrast() const;

    /// Dark, too, as the island is, where no desktop was heard; one without a preference is light.
    [[nodiscard]] static bool isDark(const DesktopAppearance& appearance);

    /// As `ColorContrast::readable`.
    Q_INVOKABLE [[nodiscard]] static QColor readable(const QColor& color, const QList<QColor>& grounds,
                                                     double wanted);

  signals:
    void changed();

  private:
    const Appearance& m_appearance;
};

} // namespace veslora
