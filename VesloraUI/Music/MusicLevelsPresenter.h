// SPDX-License-Identifier: MIT
// The heights of the bars beside the notch. They are no analysis of the sound, which the program never hears:
// while something plays each gets a new random height with every tick, and otherwise all rest.
#pragma once

#include "VesloraUI/Music/MusicModel.h"
#include "VesloraUI/Support/Presenter.h"

#include <QList>

#include <random>

namespace veslora {

class MusicLevelsPresenter : public veslora::Presenter {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(veslora::MusicModel* music MEMBER m_music REQUIRED FINAL)
    /// From the view's timeline: each one is a tick.
    Q_PROPERTY(double date MEMBER m_date WRITE setDate REQUIRED FINAL)
    Q_PROPERTY(bool isPlaying READ isPlaying NOTIFY changed FINAL)
    /// From 0 to 1, from left to right.
    Q_PROPERTY(QList<double> levels READ levels NOTIFY changed FINAL)

  public:
    static constexpr int count = 5;
    static constexpr double atRest = 0.2;
    static constexpr double lowest = 0.25; ///< while something plays
    static constexpr double highest = 1;

    using Presenter::Presenter;

    void setDate(double date);
    [[nodiscard]] bool isPlaying() const { return m_shown.isPlaying; }
    [[nodiscard]] QList<double> levels() const { return m_shown.levels; }

  protected:
    void start() override;
    void read() override;

  private:
    struct Shown {
        bool isPlaying = false;
        QList<double> levels = QList<double>(count, atRest);
        bool operator==(const Shown&) const = default;
    };

    MusicModel* m_music = nullptr;
    double m_date = 0;
    Shown m_shown;
    std::minstd_rand m_random{std::random_device{}()};
};

} // namespace veslora
