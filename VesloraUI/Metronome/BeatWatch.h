// SPDX-License-Identifier: MIT
// The beat that is heard, in views: it changes in the moment in which the listener hears the next one.
#pragma once

#include "VesloraUI/Metronome/MetronomeModel.h"
#include "VesloraUI/Platform/Task.h"

#include <QQuickItem>

#include <optional>

namespace veslora {

/// An invisible item. Put it into the view whose lights it is for: it rests while that view is invisible, and
/// while the metronome is stopped. It asks the metronome when something is about to change and at no other
/// time.
class BeatWatch : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_DISABLE_COPY_MOVE(BeatWatch)
    Q_PROPERTY(veslora::MetronomeModel* metronome MEMBER m_metronome REQUIRED FINAL)
    /// Whether `light` is wanted; without it there is one change a beat.
    Q_PROPERTY(bool hasLight MEMBER m_hasLight FINAL)
    /// The place in its bar of the beat that is heard, from 0; -1 for none.
    Q_PROPERTY(int beat READ beat NOTIFY changed FINAL)
    /// Of a lamp that flashes with each beat: from 0, dark, to 1. It goes out in a few steps.
    Q_PROPERTY(double light READ light NOTIFY changed FINAL)

  public:
    /// Seconds for which the lamp is lit, and in which it goes out after that, in so many steps.
    static constexpr double flash = 0.12;
    static constexpr double fade = 0.1;
    static constexpr int fadeSteps = 3;

    using QQuickItem::QQuickItem;
    ~BeatWatch() override = default;

    [[nodiscard]] int beat() const { return m_shown.beat; }
    [[nodiscard]] double light() const { return m_shown.light; }

    /// The lamp at so many seconds into a beat.
    [[nodiscard]] static double lightAt(double seconds);
    /// Seconds into a beat at which what shows changes next; absent when that is the next beat.
    [[nodiscard]] static std::optional<double> nextStepAfter(double seconds);

  signals:
    void changed();

  protected:
    void componentComplete() override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;

  private:
    struct Shown {
        int beat = -1;
        double light = 0;
        bool operator==(const Shown&) const = default;
    };
    /// Shows what is heard now, and waits for the next change.
    void look();
    /// Seconds until then.
    [[nodiscard]] double rest(const std::optional<MetronomeModel::BeatPhase>& phase) const;

    MetronomeModel* m_metronome = nullptr;
    bool m_hasLight = false;
    bool m_isComplete = false;
    Shown m_shown;
    Task m_next;
};

} // namespace veslora
