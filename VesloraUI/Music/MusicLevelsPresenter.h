// SPDX-License-Identifier: MIT
// The heights of the bars beside the notch. They are no analysis of the sound, which the program never hears:
// while something plays each gets a new random height with every tick, and otherwise all rest. They move
// there together, in few steps: a bar is so small that more could hardly be seen, and every one is a frame.
#pragma once

#include "VesloraUI/Music/MusicModel.h"
#include "VesloraUI/Style/Spring.h"
#include "VesloraUI/Support/Presenter.h"

#include <QList>

#include <array>
#include <random>

namespace veslora {

class MusicLevelsPresenter : public veslora::Presenter {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(veslora::MusicModel* music MEMBER m_music REQUIRED FINAL)
    /// From the view's timeline: each one is a tick.
    Q_PROPERTY(double date MEMBER m_date WRITE setDate REQUIRED FINAL)
    /// The same for the steps of the movement.
    Q_PROPERTY(double step MEMBER m_step WRITE setStep REQUIRED FINAL)
    Q_PROPERTY(bool isPlaying READ isPlaying NOTIFY changed FINAL)
    /// Whether a step would change anything.
    Q_PROPERTY(bool isMoving READ isMoving NOTIFY changed FINAL)
    /// Where the bars go, from 0 to 1, from left to right.
    Q_PROPERTY(QList<double> levels READ levels NOTIFY changed FINAL)
    /// Where they are.
    Q_PROPERTY(QList<double> heights READ heights NOTIFY changed FINAL)

  public:
    static constexpr int count = 5;
    static constexpr double atRest = 0.2;
    static constexpr double lowest = 0.25; ///< while something plays
    static constexpr double highest = 1;

    using Presenter::Presenter;

    void setDate(double date);
    void setStep(double date);
    [[nodiscard]] bool isPlaying() const { return m_shown.isPlaying; }
    [[nodiscard]] bool isMoving() const { return m_shown.isMoving; }
    [[nodiscard]] QList<double> levels() const { return m_shown.levels; }
    [[nodiscard]] QList<double> heights() const { return m_shown.heights; }

  protected:
    void start() override;
    void read() override;

  private:
    static constexpr std::array<SpringMotion, count> barsAtRest() {
        std::array<SpringMotion, count> bars;
        bars.fill({.value = atRest, .target = atRest});
        return bars;
    }
    struct Shown {
        bool isPlaying = false;
        bool isMoving = false;
        QList<double> levels = QList<double>(count, atRest);
        QList<double> heights = QList<double>(count, atRest);
        bool operator==(const Shown&) const = default;
    };
    /// Sends the bars to those levels; they are where they were.
    void moveTo(bool isPlaying, QList<double> levels);
    /// The bars where the desktop wants nothing to move.
    void stand(bool isPlaying);
    [[nodiscard]] bool isAtRest() const;

    MusicModel* m_music = nullptr;
    double m_date = 0;
    double m_step = 0;
    Shown m_shown;
    std::array<SpringMotion, count> m_bars = barsAtRest();
    std::minstd_rand m_random{std::random_device{}()};
};

} // namespace veslora
