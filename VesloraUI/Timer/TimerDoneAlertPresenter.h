// SPDX-License-Identifier: MIT
// The alert of a timer that has finished. Its fuse flickers when it appears.
#pragma once

#include "VesloraUI/Support/Presenter.h"
#include "VesloraUI/Timer/TimerModel.h"

namespace veslora {

class TimerDoneAlertPresenter : public veslora::Presenter {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(veslora::TimerModel* timer MEMBER m_timer REQUIRED FINAL)
    /// Seconds that the timer ran.
    Q_PROPERTY(double duration READ duration NOTIFY changed FINAL)
    Q_PROPERTY(bool isFuseLit READ isFuseLit NOTIFY changed FINAL)

  public:
    static constexpr int flickers = 3;
    static constexpr double flickerLength = 0.18; ///< seconds that each half of a flicker takes

    using Presenter::Presenter;

    [[nodiscard]] double duration() const { return m_shown.duration; }
    [[nodiscard]] bool isFuseLit() const { return m_shown.isFuseLit; }

  protected:
    void start() override {}
    void read() override;

  private:
    struct Shown {
        double duration = 0;
        bool isFuseLit = true;
        bool operator==(const Shown&) const = default;
    };
    /// Turns the light over, and again until as many turns are done.
    void flicker(int turns);

    TimerModel* m_timer = nullptr;
    Shown m_shown;
    Task m_flickerTask;
};

} // namespace veslora
