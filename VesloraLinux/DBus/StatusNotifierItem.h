// SPDX-License-Identifier: MIT
// The icon itself, as the desktop's panel asks for it over the bus. Main thread only.
#pragma once

#include "VesloraLinux/DBus/StatusTypes.h"

#include <QDBusObjectPath>
#include <QObject>

namespace veslora {

/// Properties, slots and signals carry the names that the interface gives them.
class StatusNotifierItem final : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString Category READ category CONSTANT)
    Q_PROPERTY(QString Id READ id CONSTANT)
    Q_PROPERTY(QString Title READ title NOTIFY NewTitle)
    Q_PROPERTY(QString Status READ status CONSTANT)
    Q_PROPERTY(int WindowId READ windowId CONSTANT)
    Q_PROPERTY(QString IconName READ iconName CONSTANT)
    Q_PROPERTY(veslora::StatusIcons IconPixmap READ icons NOTIFY NewIcon)
    Q_PROPERTY(veslora::StatusToolTip ToolTip READ toolTip NOTIFY NewToolTip)
    Q_PROPERTY(bool ItemIsMenu READ itemIsMenu CONSTANT)
    Q_PROPERTY(QDBusObjectPath Menu READ menu CONSTANT)

  public:
    explicit StatusNotifierItem(const QString& menuPath) : m_menu(menuPath) {}

    void setTitle(const QString& title);
    /// The name of one of the program's own symbols, drawn in a grey that shows on light and dark panels.
    void setSymbol(const QString& symbol);

    [[nodiscard]] QString category() const { return QStringLiteral("ApplicationStatus"); }
    [[nodiscard]] QString id() const { return QStringLiteral("veslora"); }
    [[nodiscard]] QString title() const { return m_title; }
    [[nodiscard]] QString status() const { return QStringLiteral("Active"); }
    [[nodiscard]] int windowId() const { return 0; }
    [[nodiscard]] QString iconName() const { return {}; }
    [[nodiscard]] StatusIcons icons() const { return m_icons; }
    [[nodiscard]] StatusToolTip toolTip() const { return {{}, {}, m_title, {}}; }
    [[nodiscard]] bool itemIsMenu() const { return true; }
    [[nodiscard]] QDBusObjectPath menu() const { return m_menu; }

  public slots:
    // A panel draws the menu itself. One that can't reports the click, which then stands for the menu's first
    // row.
    void ContextMenu(int x, int y);
    void Activate(int x, int y);
    void SecondaryActivate(int x, int y);
    void Scroll(int delta, const QString& orientation);

  signals:
    void activated();
    void NewTitle();
    void NewIcon();
    void NewToolTip();

  private:
    QDBusObjectPath m_menu;
    QString m_title;
    QString m_symbol;
    StatusIcons m_icons;
};

} // namespace veslora
