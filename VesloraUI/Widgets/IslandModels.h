// SPDX-License-Identifier: MIT
// The models that the island shows, as the one object that goes down to every view. It owns none of them; all
// must outlive it. Main thread only.
#pragma once

#include "VesloraUI/Claude/Monitors/AgentsModel.h"
#include "VesloraUI/KeepAwake/KeepAwakeModel.h"
#include "VesloraUI/Metronome/MetronomeModel.h"
#include "VesloraUI/Music/MusicModel.h"
#include "VesloraUI/Timer/TimerModel.h"
#include "VesloraUI/Widgets/RackModel.h"
#include "VesloraUI/Widgets/SystemSampler.h"

#include <QObject>
#include <QQmlEngine>

namespace veslora {

class IslandModels : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    Q_PROPERTY(veslora::AgentsModel* agents READ agents CONSTANT FINAL)
    Q_PROPERTY(veslora::KeepAwakeModel* keepAwake READ keepAwake CONSTANT FINAL)
    Q_PROPERTY(veslora::MetronomeModel* metronome READ metronome CONSTANT FINAL)
    Q_PROPERTY(veslora::MusicModel* music READ music CONSTANT FINAL)
    Q_PROPERTY(veslora::TimerModel* timer READ timer CONSTANT FINAL)
    Q_PROPERTY(veslora::RackModel* rack READ rack CONSTANT FINAL)
    Q_PROPERTY(veslora::SystemSampler* sampler READ sampler CONSTANT FINAL)

  public:
    struct References {
        AgentsModel& agents;
        KeepAwakeModel& keepAwake;
        MetronomeModel& metronome;
        MusicModel& music;
        TimerModel& timer;
        RackModel& rack;
        SystemSampler& sampler;
    };

    explicit IslandModels(const References& models) : m_models(models) {}

    // None of these is ever null.
    [[nodiscard]] AgentsModel* agents() const { return &m_models.agents; }
    [[nodiscard]] KeepAwakeModel* keepAwake() const { return &m_models.keepAwake; }
    [[nodiscard]] MetronomeModel* metronome() const { return &m_models.metronome; }
    [[nodiscard]] MusicModel* music() const { return &m_models.music; }
    [[nodiscard]] TimerModel* timer() const { return &m_models.timer; }
    [[nodiscard]] RackModel* rack() const { return &m_models.rack; }
    [[nodiscard]] SystemSampler* sampler() const { return &m_models.sampler; }

  private:
    References m_models;
};

} // namespace veslora
