// SPDX-License-Identifier: MIT
#include "VesloraUI/Widgets/RackGestures.h"

#include "VesloraUI/Platform/Observable.h"
#include "VesloraUI/Style/ViewEnvironment.h"
#include "VesloraUI/Widgets/WidgetTitle.h"

#include <QMouseEvent>

#include <algorithm>

namespace veslora {

namespace {

double distance(QPointF from, QPointF to) {
    return QLineF(from, to).length();
}

} // namespace

RackGestures::RackGestures(QQuickItem* parent) : QQuickItem(parent) {
    setAcceptedMouseButtons(Qt::LeftButton | Qt::RightButton);
    setFiltersChildMouseEvents(true);
}

RackGestures::~RackGestures() {
    if (m_rack) {
        disconnect(m_rack, nullptr, this, nullptr);
    }
}

void RackGestures::componentComplete() {
    QQuickItem::componentComplete();
    m_drag.emplace(*m_rack, ViewEnvironment::of(qmlEngine(this)).scheduler(), [this] { showGhost(); });
    connect(m_rack, &RackModel::changed, this, &RackGestures::rackChanged);
}

bool RackGestures::contains(const QPointF& point) const {
    return boundingRect().adjusted(-hitMargin, -hitMargin, hitMargin, hitMargin).contains(point);
}

bool RackGestures::isEmpty() const {
    return m_rack->shownPage().empty();
}

/// Of neighbours so near that both can be meant, the one that is nearer.
std::optional<WidgetID> RackGestures::moduleAt(QPointF point, double margin) const {
    if (point.y() < -margin || point.y() > height() + margin) {
        return std::nullopt;
    }
    const double x = fromMiddle(point.x()) + m_rack->width() / 2;
    const auto away = [x](const ModuleFrame& frame) {
        return std::max({frame.x - x, x - frame.x - frame.width, 0.0});
    };
    const auto frames = m_rack->frames();
    const auto nearest = std::ranges::min_element(frames, {}, away);
    return nearest != frames.end() && away(*nearest) <= margin ? std::optional(nearest->id) : std::nullopt;
}

void RackGestures::beginLongPress(QPointF point) {
    if (m_rack->isEditing() || (!isEmpty() && !moduleAt(point, 0))) {
        return;
    }
    m_longPressStart = point;
    m_longPressTask =
        ViewEnvironment::of(qmlEngine(this)).scheduler().after(longPress, [this] { m_rack->enterEditing(); });
}

void RackGestures::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::RightButton) {
        m_longPressTask.cancel();
        if (!m_rack->isEditing()) {
            emit menuWanted(event->position().x(), event->position().y());
        }
        return;
    }
    if (!m_rack->isEditing()) {
        beginLongPress(event->position());
    } else if (const auto id = moduleAt(event->position(), hitMargin)) {
        m_grip = {*id, event->position(), fromMiddle(event->position().x())};
    }
}

void RackGestures::mouseMoveEvent(QMouseEvent* event) {
    follow(event->position());
}

void RackGestures::follow(QPointF point) {
    if (distance(m_longPressStart, point) > longPressRoom) {
        m_longPressTask.cancel();
    }
    if (!m_grip) {
        return;
    }
    m_grip->isDrag = m_grip->isDrag || distance(m_grip->start, point) >= dragDistance;
    if (m_grip->isDrag) {
        m_drag->dragChanged(m_grip->id, m_grip->from, fromMiddle(point.x()));
        showGhost();
    }
}

void RackGestures::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        endPress();
    }
}

void RackGestures::mouseUngrabEvent() {
    endPress();
}

void RackGestures::endPress() {
    m_longPressTask.cancel();
    m_grip.reset();
    m_drag->dragEnded();
    showGhost();
}

bool RackGestures::childMouseEventFilter(QQuickItem* child, QEvent* event) {
    // Not always a QMouseEvent: what the toolkit makes of a touch is of a class of its own.
    const auto* mouse = dynamic_cast<QSinglePointEvent*>(event);
    if (event->type() == QEvent::MouseButtonPress && mouse->button() == Qt::LeftButton) {
        beginLongPress(child->mapToItem(this, mouse->position()));
    } else if (event->type() == QEvent::MouseMove) {
        follow(child->mapToItem(this, mouse->position()));
    } else if (event->type() == QEvent::MouseButtonRelease || event->type() == QEvent::UngrabMouse) {
        m_longPressTask.cancel();
    }
    return QQuickItem::childMouseEventFilter(child, event);
}

void RackGestures::rackChanged() {
    if (!m_rack->isEditing()) {
        // Or the button that is still held would begin another drag in the next edit mode.
        m_grip.reset();
    }
    showGhost();
}

void RackGestures::showGhost() {
    RackGhost ghost = m_ghost;
    const auto dragged = m_rack->draggingID();
    const auto held = dragged ? m_drag->ghostCenter() : std::nullopt;
    if (dragged && held) {
        ghost.id = QString::fromUtf8(rawValue(*dragged));
        ghost.title = shownTitle(*dragged);
    }
    ghost.isHeld = held.has_value();
    const auto page = m_rack->shownPage();
    const auto frames = m_rack->frames();
    const auto own = std::ranges::find(
        frames, ghost.id, [](const ModuleFrame& frame) { return QString::fromUtf8(rawValue(frame.id)); });
    if (own != frames.end()) {
        ghost.width = own->width;
        ghost.isWide = page[static_cast<std::size_t>(own - frames.begin())].size == WidgetSize::wide;
        ghost.center = own->midX() - m_rack->width() / 2;
    }
    ghost.center = held.value_or(ghost.center);
    assign(this, m_ghost, ghost, &RackGestures::ghostChanged);
}

} // namespace veslora
