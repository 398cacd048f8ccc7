// SPDX-License-Identifier: MIT
#include "VesloraUI/Widgets/ScrollReader.h"

#include <QWheelEvent>

namespace veslora {

namespace {

constexpr int notch = 120; ///< the toolkit's measure of one notch of a wheel
/// X servers and compositors tell of fingers in fractions of a notch too, and count about so many points to
/// it.
constexpr double pointsOfNotch = 15;

/// Of the event's own time, so that no stall of ours makes one gesture of two or two of one.
double secondsOf(const QWheelEvent& event) {
    constexpr double perSecond = 1000;
    return static_cast<double>(event.timestamp()) / perSecond;
}

QPointF pointsOf(const QWheelEvent& event, ScrollSource source) {
    // On X, where the server's devices are known and no phase is, pixels are whatever unit a driver counts
    // in.
    const bool arePixelsPoints = event.phase() != Qt::NoScrollPhase || source == ScrollSource::unknown;
    return arePixelsPoints && !event.pixelDelta().isNull()
               ? QPointF(event.pixelDelta())
               : QPointF(event.angleDelta()) * pointsOfNotch / notch;
}

} // namespace

PageScroll ScrollReader::read(const QWheelEvent& event, ScrollSource source) {
    m_hasBegun |= event.phase() == Qt::ScrollBegin;
    const bool isPrecise = isOfFingers(event, source);
    const QPointF moved = isPrecise ? pointsOf(event, source) : QPointF(event.angleDelta()) / notch;
    return {.deltaX = moved.x(),
            .deltaY = moved.y(),
            .isPrecise = isPrecise,
            .isInverted = event.inverted(),
            .phase = phaseOf(event),
            .time = secondsOf(event)};
}

PageScroll::Phase ScrollReader::phaseOf(const QWheelEvent& event) const {
    if (event.phase() == Qt::ScrollMomentum) {
        return PageScroll::Phase::momentum;
    }
    if (m_hasBegun) {
        return PageScroll::Phase::began;
    }
    return event.phase() == Qt::NoScrollPhase ? PageScroll::Phase::unknown : PageScroll::Phase::changed;
}

bool ScrollReader::isOfFingers(const QWheelEvent& event, ScrollSource source) {
    if (source != ScrollSource::unknown) {
        return source == ScrollSource::fingers;
    }
    if (event.phase() != Qt::NoScrollPhase || !event.pixelDelta().isNull()) {
        return true;
    }
    // Fingers move whole notches too, by chance, amid a gesture of fractions.
    const double time = secondsOf(event);
    const bool isFraction = event.angleDelta().x() % notch != 0 || event.angleDelta().y() % notch != 0;
    const bool goesOn = m_lastOfFingers && time - *m_lastOfFingers <= PageSwipe::pause;
    m_lastOfFingers = isFraction || goesOn ? std::optional(time) : std::nullopt;
    return m_lastOfFingers.has_value();
}

} // namespace veslora
