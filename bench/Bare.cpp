// SPDX-License-Identifier: MIT
// The least that the toolkit can do: a black rectangle in a panel of the island's kind. What it takes is what
// no program on this toolkit can do without.
#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QScreen>

#include <memory>

int main(int argc, char** argv) {
    qputenv("QT_QUICK_BACKEND", "software");
    const QGuiApplication application(argc, argv);
    QQmlEngine engine;
    QQmlComponent component(&engine);
    component.setData("import QtQuick\nRectangle { color: \"black\"; width: 200; height: 24 }", QUrl());
    const std::unique_ptr<QObject> object(component.create());
    auto* const item = qobject_cast<QQuickItem*>(object.get());
    if (item == nullptr) {
        return 1;
    }
    QQuickWindow window;
    window.setFlags(Qt::FramelessWindowHint | Qt::BypassWindowManagerHint | Qt::WindowDoesNotAcceptFocus);
    item->setParentItem(window.contentItem());
    window.setGeometry((QGuiApplication::primaryScreen()->size().width() - 200) / 2, 0, 200, 24);
    window.show();
    return QGuiApplication::exec();
}
