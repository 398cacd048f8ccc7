// SPDX-License-Identifier: MIT
// Decides whether a press on an alert answers it: only if its whole text had been on screen for long enough
// when the button went down, and nothing has held the program up since. A plain value without a clock; its
// owner keeps it on one thread.
//
// Two clocks are at work. Pointer events carry the window system's own time, in milliseconds of 32 bits that
// wrap after 49.7 days, and so does the frame: a press is judged by when it was made, not by when it is
// handled. That clock has no known relation to ours. A stall shows on ours, in steady seconds.
#pragma once

#include <cstdint>
#include <optional>

namespace veslora {

class AnswerGate {
  public:
    /// Milliseconds that the text must have been on screen before a button goes down.
    static constexpr std::int32_t consideration = 600;
    /// Steady seconds between two ticks of the program beyond which it counts as held up: what was pressed
    /// meanwhile was pressed blindly.
    static constexpr double stall = 0.3;
    /// Steady seconds that must have passed since the frame for an action that carries no time of its own. It
    /// may have waited for as long as a stall that nobody saw.
    static constexpr double actionDelay = 0.9;

    /// `steady` is now, as in all operations.
    explicit AnswerGate(double steady) : m_lastTick(steady) {}

    /// The frame that holds all of the text was on screen at `eventTime` of the window system's clock.
    void frameShown(std::uint32_t eventTime, double steady);

    /// To be called at short, even intervals. False if the program was held up since the last tick or press:
    /// the text then has to be seen on screen all over again.
    bool tick(double steady);

    /// Forgets the frame, as it does not show the text any more.
    void reset();

    /// Whether the text is on screen as far as is known.
    [[nodiscard]] bool isShown() const { return m_frame.has_value(); }
    /// Whether a button that goes down now would be accepted, for the look of the keys. The judgement itself
    /// goes by the event's own time.
    [[nodiscard]] bool isArmed(double steady) const;

    /// A button went down on a key. Whether its release may answer.
    bool press(std::uint32_t eventTime, double steady);
    /// The button came up on the same key. True if press and release answer together.
    bool release(std::uint32_t eventTime, double steady);
    /// A key was asked to act by other means than a button, such as a screen reader. True if it answers.
    bool act(double steady);

  private:
    struct Frame {
        std::uint32_t eventTime = 0;
        double steady = 0; ///< when it became known
    };
    [[nodiscard]] bool isConsidered(std::uint32_t eventTime) const;

    double m_lastTick;
    std::optional<Frame> m_frame;
    std::optional<std::uint32_t> m_press; ///< of the button that is down, if it was accepted
};

} // namespace veslora
