// SPDX-License-Identifier: MIT
#include "VesloraUI/Style/SegmentRow.h"

#include "VesloraUI/Style/PixelCanvas.h"
#include "VesloraUI/Style/VesloraStyle.h"

#include <algorithm>

namespace veslora {

namespace {
constexpr double tickRadius = 1; // points
} // namespace

SegmentRow::SegmentRow(QQuickItem* parent) : PixelItem(parent) {
    m_firstFrame.setItem(this);
    m_change.setDuration(duration);
    m_change.setStartValue(0.0);
    m_change.setEndValue(1.0);
    m_change.setEasingCurve(QEasingCurve::OutQuad);
    connect(this, &SegmentRow::targetsChanged, this, &SegmentRow::retarget);
    connect(this, &SegmentRow::spacingChanged, this, &SegmentRow::redraw);
    connect(&m_change, &QVariantAnimation::valueChanged, this, [this](const QVariant& share) {
        std::vector<QColor> colors;
        for (std::size_t i = 0; i < m_targets.size(); ++i) {
            colors.push_back(VesloraStyle::blend(m_former[i], m_targets[i], share.toDouble()));
        }
        setColors(std::move(colors));
    });
}

void SegmentRow::componentComplete() {
    PixelItem::componentComplete();
    retarget();
}

void SegmentRow::retarget() {
    if (!isComponentComplete()) {
        return;
    }
    std::vector<QColor> targets;
    for (int i = 0; i < m_segments; ++i) {
        targets.push_back(target(i));
    }
    if (targets == m_targets) {
        return;
    }
    m_targets = std::move(targets);
    m_change.stop();
    if (m_firstFrame.hasPassed() && m_colors.size() == m_targets.size()) {
        m_former = m_colors;
        m_change.start();
    } else {
        setColors(m_targets);
    }
}

int SegmentRow::lit() const {
    return VesloraStyle::litSegments(m_fraction, m_segments);
}

QColor SegmentRow::target(int index) const {
    if (index >= lit()) {
        return VesloraStyle::unlitTick();
    }
    return m_levelColors ? VesloraStyle::segmentColor(index, m_segments, m_reversedLevels) : m_tint;
}

void SegmentRow::setColors(std::vector<QColor> colors) {
    if (colors != m_colors) {
        m_colors = std::move(colors);
        redraw();
    }
}

std::vector<SegmentRow::Tick> SegmentRow::ticks(int width, int count, int gap) {
    std::vector<Tick> ticks;
    if (count <= 0 || width <= 0) {
        return ticks;
    }
    const int between = count > 1 ? std::clamp(gap, 0, std::max(0, (width - count) / (count - 1))) : 0;
    const int filled = width - (count - 1) * between;
    for (int i = 0; i < count; ++i) {
        const int start = i * filled / count;
        ticks.push_back({start + i * between, (i + 1) * filled / count - start});
    }
    return ticks;
}

PixelItem::Drawing SegmentRow::drawing() const {
    return [colors = m_colors, spacing = m_spacing](PixelCanvas& canvas, const QRect& frame, double scale) {
        const auto row = ticks(frame.width(), static_cast<int>(colors.size()), nearestPixel(spacing * scale));
        for (std::size_t i = 0; i < row.size(); ++i) {
            const QRect tick(frame.x() + row[i].start, frame.y(), row[i].width, frame.height());
            canvas.fill(tick, tickRadius * scale, colors[i]);
        }
    };
}

} // namespace veslora
