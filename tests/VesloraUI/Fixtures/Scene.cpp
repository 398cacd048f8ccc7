// SPDX-License-Identifier: MIT
#include "tests/VesloraUI/Fixtures/Scene.h"

#include "VesloraUI/Store/SettingsKeys.h"
#include "VesloraUI/Style/Views.h"

#include <QAccessible>
#include <QGuiApplication>
#include <QQmlComponent>
#include <QQuickItem>
#include <QScreen>
#include <QTest>

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

namespace veslora {

namespace {

void visit(QAccessibleInterface* node, const std::function<void(QAccessibleInterface*)>& each) {
    if (!node || node->state().invisible) {
        return;
    }
    each(node);
    for (int i = 0; i < node->childCount(); ++i) {
        visit(node->child(i), each);
    }
}

void visit(QQuickItem* item, const std::function<void(QQuickItem*)>& each) {
    if (!item->isVisible()) {
        return;
    }
    each(item);
    for (QQuickItem* child : item->childItems()) {
        visit(child, each);
    }
}

/// Deletes what is to go later. Outside the event loop nothing else does, and what is left would outlive its
/// engine, with animations that still run.
void deleteWhatIsToGo() {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

QScreen* screenOf(double scale) {
    const QList<QScreen*> screens = QGuiApplication::screens();
    const auto found = std::ranges::find(screens, scale, &QScreen::devicePixelRatio);
    EXPECT_NE(found, screens.end()) << "there is no screen at scale " << scale;
    return found == screens.end() ? QGuiApplication::primaryScreen() : *found;
}

} // namespace

Scene::Scene() {
    QAccessible::setActive(true);
    prepareEngine(engine, environment);
}

Scene::~Scene() {
    close();
}

void Scene::close() {
    m_view.reset();
    m_window.reset();
    deleteWhatIsToGo();
}

void Scene::show(const QString& file, const QVariantMap& properties, QSize size) {
    show(createView(engine, file, properties), size);
}

void Scene::showText(const QString& text, QSize size, const QVariantMap& properties) {
    QQmlComponent component(&engine);
    component.setData("import QtQuick\nimport Veslora\n" + text.toUtf8(), {});
    EXPECT_TRUE(component.isReady()) << component.errorString().toStdString();
    show(std::unique_ptr<QObject>(component.createWithInitialProperties(properties)), size);
}

void Scene::show(std::unique_ptr<QObject> view, QSize size) {
    m_view.reset();
    m_window = std::make_unique<QQuickWindow>();
    m_window->setColor(Qt::black);
    QScreen* screen = screenOf(scale);
    m_window->setScreen(screen);
    m_window->setGeometry(QRect(screen->geometry().topLeft(), size));
    m_view = std::move(view);
    auto* item = qobject_cast<QQuickItem*>(m_view.get());
    Q_ASSERT(item);
    item->setParentItem(m_window->contentItem());
    if (item->width() <= 0) {
        item->setSize(size);
    }
    m_window->show();
    advance(0);
}

void Scene::showRack(RackModel& shown, QSize size) {
    close();
    m_modelsOfRack = std::make_unique<IslandModels>(
        IslandModels::References{agents, keepAwake, metronome, music, timer, shown, sampler});
    show("Widgets/RackView.qml", {{"models", QVariant::fromValue(m_modelsOfRack.get())}}, size);
}

void Scene::showWindow(std::unique_ptr<QQuickWindow> shown) {
    m_window = std::move(shown);
    m_window->show();
    advance(0);
}

void Scene::advance(double seconds) {
    platform.advance(seconds);
    QCoreApplication::processEvents();
    // Lists make their rows when a frame is drawn, and let them go.
    m_window->grabWindow();
    deleteWhatIsToGo();
}

QAccessibleInterface* Scene::find(const QString& name) const {
    QAccessibleInterface* found = nullptr;
    visit(QAccessible::queryAccessibleInterface(m_window.get()), [&](QAccessibleInterface* node) {
        if (!found && node->text(QAccessible::Name) == name) {
            found = node;
        }
    });
    return found;
}

bool Scene::shows(const QString& name) const {
    return find(name) != nullptr;
}

bool Scene::isEnabled(const QString& name) const {
    // Qt Quick does not tell accessibility that an item is disabled; the item itself knows.
    const auto* item = itemNamed(name);
    return item && item->isEnabled();
}

QQuickItem* Scene::itemNamed(const QString& name) const {
    auto* node = find(name);
    return node ? qobject_cast<QQuickItem*>(node->object()) : nullptr;
}

QStringList Scene::names() const {
    QStringList names;
    visit(QAccessible::queryAccessibleInterface(m_window.get()),
          [&](QAccessibleInterface* node) { names << node->text(QAccessible::Name); });
    names.removeAll(QString());
    return names;
}

QPointF Scene::centerOf(const QString& name) const {
    const auto* node = find(name);
    return node ? m_window->mapFromGlobal(QRectF(node->rect()).center()) : QPointF(-1, -1);
}

/// Lets the next event of the mouse be of now.
void Scene::stampMouse() const {
    QTest::lastMouseTimestamp = static_cast<int>(platform.frames.eventTime());
}

void Scene::press(const QString& name) {
    stampMouse();
    QTest::mouseClick(m_window.get(), Qt::LeftButton, {}, centerOf(name).toPoint());
}

void Scene::pressDown(const QString& name) {
    stampMouse();
    QTest::mousePress(m_window.get(), Qt::LeftButton, {}, centerOf(name).toPoint());
}

void Scene::release(QPointF point) {
    stampMouse();
    QTest::mouseRelease(m_window.get(), Qt::LeftButton, {}, point.toPoint());
}

QStringList Scene::texts() const {
    QStringList texts;
    visit(m_window->contentItem(), [&](QQuickItem* item) {
        const QVariant text = item->inherits("QQuickText")            ? item->property("text")
                              : item->inherits("veslora::ProvenText") ? item->property("shownText")
                                                                      : QVariant();
        if (!text.toString().isEmpty() && item->opacity() > 0) {
            texts << text.toString();
        }
    });
    return texts;
}

QQuickItem* Scene::itemWith(const char* property, const QVariant& value) const {
    QQuickItem* found = nullptr;
    visit(m_window->contentItem(), [&](QQuickItem* item) {
        if (!found && item->property(property) == value) {
            found = item;
        }
    });
    return found;
}

QImage Scene::picture() const {
    return m_window->grabWindow();
}

} // namespace veslora
