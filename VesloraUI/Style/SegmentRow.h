// SPDX-License-Identifier: MIT
// The ticks of a meter as one item: all of one form, equally far apart, and sharp at every scale. A tick that
// changes its colour does so in a moment, but not before it was seen.
#pragma once

#include "VesloraUI/Style/FirstFrame.h"
#include "VesloraUI/Style/PixelItem.h"

#include <QColor>
#include <QVariantAnimation>

#include <vector>

namespace veslora {

// Qt tells qmllint of a base only by the name that is written here, so it has to be the whole one.
class SegmentRow : public veslora::PixelItem {
    Q_OBJECT
    QML_ELEMENT
    /// How much is lit, from 0 to 1; any part of a tick lights all of it.
    Q_PROPERTY(double fraction MEMBER m_fraction NOTIFY targetsChanged FINAL)
    /// Ticks from the left on that have their colour; the others are dark.
    Q_PROPERTY(int lit READ lit NOTIFY targetsChanged FINAL)
    Q_PROPERTY(int segments MEMBER m_segments NOTIFY targetsChanged FINAL)
    Q_PROPERTY(QColor tint MEMBER m_tint NOTIFY targetsChanged FINAL)
    /// Ticks are coloured by their place, and `tint` is not used.
    Q_PROPERTY(bool levelColors MEMBER m_levelColors NOTIFY targetsChanged FINAL)
    Q_PROPERTY(bool reversedLevels MEMBER m_reversedLevels NOTIFY targetsChanged FINAL)
    /// Points between two ticks.
    Q_PROPERTY(double spacing MEMBER m_spacing NOTIFY spacingChanged FINAL)

  public:
    static constexpr int duration = 150; ///< of a change of colour, milliseconds

    explicit SegmentRow(QQuickItem* parent = nullptr);

    [[nodiscard]] int lit() const;
    /// The colours that the ticks have now, from the left.
    [[nodiscard]] const std::vector<QColor>& colors() const { return m_colors; }

    /// From the left, device pixels.
    struct Tick {
        int start = 0;
        int width = 0;
        bool operator==(const Tick&) const = default;
    };
    /// `count` ticks that fill `width` with gaps of exactly `gap`; their widths differ by a pixel at most.
    /// The gaps become narrower where there is no pixel left for each tick. All are device pixels.
    [[nodiscard]] static std::vector<Tick> ticks(int width, int count, int gap);

  signals:
    void targetsChanged();
    void spacingChanged();

  protected:
    [[nodiscard]] Drawing drawing() const override;
    void componentComplete() override;

  private:
    void retarget();
    [[nodiscard]] QColor target(int index) const;
    void setColors(std::vector<QColor> colors);

    double m_fraction = 0;
    int m_segments = 10;
    QColor m_tint;
    bool m_levelColors = false;
    bool m_reversedLevels = false;
    double m_spacing = 2;
    std::vector<QColor> m_colors;
    std::vector<QColor> m_former; ///< where the present change began
    std::vector<QColor> m_targets;
    QVariantAnimation m_change; ///< from 0 to 1
    FirstFrame m_firstFrame;
};

} // namespace veslora
