// SPDX-License-Identifier: MIT
// Keeps the machine awake: for a session that the user started, or while an agent works. Owns the state, the
// tick of a running session and what is asserted. Nothing of a session outlives the program. Main thread
// only.
#pragma once

#include "VesloraCore/KeepAwake/KeepAwakeState.h"
#include "VesloraUI/Platform/PowerAsserting.h"
#include "VesloraUI/Platform/Scheduler.h"

#include <QObject>
#include <QQmlEngine>

#include <functional>
#include <optional>

namespace veslora {

class Defaults;

class KeepAwakeModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    Q_DISABLE_COPY_MOVE(KeepAwakeModel)

  public:
    /// Asserts nothing yet.
    KeepAwakeModel(Defaults& settings, PowerAsserting& power, Scheduler& scheduler);
    ~KeepAwakeModel() override = default;

    [[nodiscard]] const KeepAwakeState& state() const { return m_state; }
    /// What is asserted now; absent while the machine may sleep as usual.
    [[nodiscard]] const std::optional<KeepAwakeHold>& hold() const { return m_hold; }
    /// Whether a session of the user's runs.
    [[nodiscard]] bool isOn() const { return m_state.isManualActive(m_scheduler.now()); }
    /// Whole seconds left of a timed session, at least 1; absent when none runs.
    [[nodiscard]] std::optional<double> remaining() const { return m_state.remaining(m_scheduler.now()); }
    /// When a timed session ends, by its whole seconds left; absent when none runs.
    [[nodiscard]] std::optional<Timestamp> end() const;

    /// As the state does; a new session replaces the one that runs.
    void start(std::optional<double> seconds);
    void stop();
    void adjust(int steps);

    /// Whether an agent works, of either kind.
    [[nodiscard]] bool claudeIsWorking() const { return m_state.claudeIsWorking; }
    void setClaudeIsWorking(bool isWorking);

    /// The user's wish for agents at work. Setting it writes the settings, from where it comes back.
    [[nodiscard]] bool whileClaudeWorks() const { return m_state.whileClaudeWorks; }
    void setWhileClaudeWorks(bool whileClaudeWorks);

    /// Called after every change, and once a second while a session runs.
    std::function<void()> onChange;

  signals:
    void stateChanged();
    void holdChanged();

  private:
    void tick();
    void applySettings();
    /// Ends every change: asserts what is to be held now, if that is something else than before.
    void apply();
    void setState(const KeepAwakeState& state);

    Defaults& m_settings;
    PowerAsserting& m_power;
    Scheduler& m_scheduler;
    KeepAwakeState m_state;
    std::optional<KeepAwakeHold> m_hold;
    Task m_tickTask; ///< runs while a session of the user's does
};

} // namespace veslora
