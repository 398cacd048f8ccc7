// SPDX-License-Identifier: MIT
// A small island beside the choice of the accent: the real views on models of its own, which know no agent,
// no player and no loudspeaker. A timer runs on it. Main thread only.
#pragma once

#include "VesloraUI/Island/IslandPresentation.h"
#include "VesloraUI/Island/NotchViewModel.h"
#include "VesloraUI/Settings/SilentSeams.h"
#include "VesloraUI/Store/Defaults.h"
#include "VesloraUI/Widgets/IslandModels.h"

#include <QObject>
#include <QQmlEngine>

#include <string>

namespace veslora {

class DirectoryWatcher;
class Files;
class Scheduler;
class TextMeasuring;

class AccentPreview : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    Q_DISABLE_COPY_MOVE(AccentPreview)
    /// Points; the island hangs from the middle of its upper edge.
    Q_PROPERTY(double width READ width CONSTANT FINAL)
    Q_PROPERTY(double height READ height CONSTANT FINAL)
    Q_PROPERTY(veslora::NotchViewModel* model READ model CONSTANT FINAL)

  public:
    static constexpr int minutes = 25; ///< of its timer

    /// What of the machine it needs. All of it must outlive the preview.
    struct Seams {
        Scheduler& scheduler;
        Files& files;
        DirectoryWatcher& directoryWatcher;
        const TextMeasuring& measuring;
        std::string configuration; ///< the folder of the settings
    };

    explicit AccentPreview(const Seams& seams);
    ~AccentPreview() override = default;

    [[nodiscard]] static double width() { return 360; }
    [[nodiscard]] static double height() { return 36; }
    [[nodiscard]] NotchViewModel* model() { return &m_model; }

  private:
    /// Has its defaults before any model reads them.
    class Settings final : public Defaults {
      public:
        explicit Settings(const Seams& seams);
    };

    void refresh();

    Scheduler& m_scheduler;
    SilentSeams m_silence;
    Settings m_settings;
    AgentsModel m_agents;
    KeepAwakeModel m_keepAwake;
    MetronomeModel m_metronome;
    MusicModel m_music;
    TimerModel m_timer;
    RackModel m_rack;
    SystemSampler m_sampler;
    IslandModels m_models;
    PresentationJudge m_judge;
    NotchViewModel m_model;
};

} // namespace veslora
