// SPDX-License-Identifier: MIT
#include "VesloraUI/Island/AlertGate.h"

#include "VesloraUI/Platform/FrameClock.h"
#include "VesloraUI/Platform/Logs.h"
#include "VesloraUI/Platform/Observable.h"
#include "VesloraUI/Platform/Scheduler.h"
#include "VesloraUI/Style/ViewEnvironment.h"

#include <QQuickWindow>

namespace veslora {

void AlertGate::componentComplete() {
    m_isComplete = true;
    connect(m_room, &QQuickItem::windowChanged, this, &AlertGate::watchWindow);
    watchWindow(m_room->window());
    update();
}

void AlertGate::setText(QQuickItem* text) {
    m_text = text;
    update();
}

void AlertGate::setWatching(bool isWatching) {
    m_isWatching = isWatching;
    update();
}

void AlertGate::update() {
    const bool judges = m_isComplete && m_isWatching && m_text;
    if (judges == m_gate.has_value()) {
        return;
    }
    m_gate.reset();
    m_ticks.cancel();
    if (judges) {
        m_gate.emplace(now());
        m_ticks = scheduler().every(period, Precision::exact, [this] {
            if (isLive()) {
                updateArmed();
            }
        });
    }
    updateArmed();
}

void AlertGate::watchWindow(QQuickWindow* window) {
    if (m_window) {
        disconnect(m_window, nullptr, this, nullptr);
    }
    m_window = window;
    if (window) {
        connect(window, &QQuickWindow::frameSwapped, this, &AlertGate::frameSwapped);
    }
}

/// The items are as they were drawn: the software renderer draws on the main thread, and nothing changes an
/// item between its drawing and this signal.
void AlertGate::frameSwapped() {
    if (!m_isWatching) {
        return;
    }
    const bool isShown = m_gate ? m_gate->isShown() : m_isOnScreen;
    if (!isWhole()) {
        m_mark.cancel();
        if (m_gate && isShown) {
            lookAgain();
        }
    } else if (!isShown && !m_mark.isActive()) {
        m_mark = frameClock().afterFrame([this](std::uint32_t eventTime) { frameShown(eventTime); });
    }
}

void AlertGate::frameShown(std::uint32_t eventTime) {
    qCInfo(Logs::island, "the alert is on screen");
    if (m_gate) {
        m_gate->frameShown(eventTime, now());
        m_arming = scheduler().after(AnswerGate::consideration / 1000.0, [this] {
            updateArmed();
            // Nothing depends on the answer yet: it lets the frames' clock find out what it can see of the
            // screen before something does.
            static_cast<void>(isCovered());
        });
    }
    assign(this, m_isOnScreen, true, &AlertGate::isOnScreenChanged);
}

bool AlertGate::isLive() {
    if (m_gate->tick(now())) {
        return true;
    }
    qCInfo(Logs::island, "the program was held up: the alert has to be seen again");
    lookAgain();
    return false;
}

void AlertGate::lookAgain() {
    m_gate->reset();
    // A frame that is on its way was drawn before the stall.
    m_mark.cancel();
    updateArmed();
    if (m_window) {
        m_window->update();
    }
}

void AlertGate::updateArmed() {
    if (!m_gate || !m_gate->isShown()) {
        m_arming.cancel();
    }
    assign(this, m_isArmed, m_gate && m_gate->isArmed(now()), &PressJudge::isArmedChanged);
}

void AlertGate::press(std::uint32_t eventTime) {
    if (!m_gate || !isLive()) {
        return;
    }
    if (!m_gate->press(eventTime, now())) {
        qCInfo(Logs::island, "a press answers nothing: the alert was not on screen for long enough");
    } else if (isCovered()) {
        lookAgain();
    }
}

bool AlertGate::release(std::uint32_t eventTime) {
    return m_gate && isLive() && m_gate->release(eventTime, now());
}

bool AlertGate::act() {
    if (!m_gate || !isLive() || !m_gate->act(now())) {
        return false;
    }
    if (isCovered()) {
        lookAgain();
        return false;
    }
    return true;
}

bool AlertGate::isWhole() const {
    if (!m_room || !m_outline || !m_window || !m_room->isVisible()) {
        return false;
    }
    const QRectF inScene = m_room->mapRectToScene(m_room->boundingRect());
    double opacity = 1;
    for (const QQuickItem* item = m_room; item; item = item->parentItem()) {
        opacity *= item->opacity();
        if (item->clip() && !item->mapRectToScene(item->boundingRect()).contains(inScene)) {
            return false;
        }
    }
    return opacity >= wholeOpacity && QRectF({}, QSizeF(m_window->size())).contains(inScene) &&
           m_outline->path().contains(m_outline->mapRectFromScene(inScene));
}

bool AlertGate::isCovered() const {
    const bool isCovered =
        m_text && frameClock().look(m_text->mapRectToScene(m_text->boundingRect())) == ScreenLook::otherwise;
    if (isCovered) {
        qCInfo(Logs::island, "something else is on screen where the alert's text should be");
    }
    return isCovered;
}

Scheduler& AlertGate::scheduler() const {
    return ViewEnvironment::of(qmlEngine(this)).scheduler();
}

FrameClock& AlertGate::frameClock() const {
    return ViewEnvironment::of(qmlEngine(this)).frameClock();
}

double AlertGate::now() const {
    return scheduler().steadyNow();
}

} // namespace veslora
