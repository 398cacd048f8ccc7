// SPDX-License-Identifier: MIT
// What the island shows and how large it is: the one model that its root view reads. A new one is made with
// each layout. Main thread only.
#pragma once

#include "VesloraCore/Island/IslandState.h"
#include "VesloraCore/Island/NotchGeometry.h"
#include "VesloraUI/Claude/Monitors/AgentsModel.h"
#include "VesloraUI/Island/LiveActivity.h"
#include "VesloraUI/KeepAwake/KeepAwakeModel.h"
#include "VesloraUI/Timer/TimerModel.h"
#include "VesloraUI/Widgets/RackModel.h"
#include "VesloraUI/Widgets/SystemSampler.h"

#include <QObject>
#include <QQmlEngine>
#include <QString>

namespace veslora {

class Defaults;
class TextMeasuring;

class NotchViewModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    Q_PROPERTY(Content content READ content NOTIFY contentChanged FINAL)
    /// Differs whenever the view of the content must be a new one.
    Q_PROPERTY(QString contentIdentity READ contentIdentity NOTIFY contentChanged FINAL)
    /// Whom the content is about, where that may change while its kind stays: the request that an alert asks
    /// about, or the session of a notice.
    Q_PROPERTY(QString subject READ subject NOTIFY contentChanged FINAL)
    Q_PROPERTY(bool isOpen READ isOpen NOTIFY layoutChanged FINAL)
    Q_PROPERTY(double islandWidth READ islandWidth NOTIFY layoutChanged FINAL)
    Q_PROPERTY(double islandHeight READ islandHeight NOTIFY layoutChanged FINAL)
    Q_PROPERTY(double topRadius READ topRadius NOTIFY layoutChanged FINAL)
    Q_PROPERTY(double bottomRadius READ bottomRadius NOTIFY layoutChanged FINAL)
    Q_PROPERTY(double wingWidth READ wingWidth NOTIFY layoutChanged FINAL)
    Q_PROPERTY(double notchWidth READ notchWidth CONSTANT FINAL)
    Q_PROPERTY(double notchHeight READ notchHeight CONSTANT FINAL)
    Q_PROPERTY(veslora::AgentsModel* agents READ agents CONSTANT FINAL)
    Q_PROPERTY(veslora::KeepAwakeModel* keepAwake READ keepAwake CONSTANT FINAL)
    Q_PROPERTY(veslora::TimerModel* timer READ timer CONSTANT FINAL)
    Q_PROPERTY(veslora::RackModel* rack READ rack CONSTANT FINAL)
    Q_PROPERTY(veslora::SystemSampler* sampler READ sampler CONSTANT FINAL)

  public:
    /// What stands on the island. States whose views have not landed show nothing.
    enum Content {
        Nothing,
        TimerRunning,
        ClaudeFinished,
        ClaudeWorking,
        KeepAwake,
        TimerDone,
        ClaudeRequest,
        ClaudeNotice,
        Rack,
    };
    Q_ENUM(Content)

    /// Needs every one of the models.
    NotchViewModel(const NotchGeometry& geometry, const IslandModels& models, RackModel& rack,
                   SystemSampler& sampler, const Defaults& settings, const TextMeasuring& measuring,
                   Timestamp now);

    [[nodiscard]] bool isExpanded() const { return m_isExpanded; }
    void setExpanded(bool isExpanded);

    /// The moment at which the state is judged. Setting it judges anew, also for an equal one.
    [[nodiscard]] Timestamp clock() const { return m_clock; }
    void setClock(Timestamp clock);

    [[nodiscard]] IslandState state() const { return m_shown.state; }
    [[nodiscard]] Content content() const { return m_shown.content; }
    [[nodiscard]] QString contentIdentity() const;
    [[nodiscard]] QString subject() const { return m_shown.subject; }
    /// Whether the alert that shows stands on screen already, as its view has said. Until then a click that
    /// falls where it will be was meant for what lies beneath.
    [[nodiscard]] bool isAlertOnScreen() const { return m_isAlertOnScreen; }
    /// To be said by the alert's view. One that is on its way out already changes nothing.
    Q_INVOKABLE void alertIsOnScreen(const QString& identity);
    [[nodiscard]] bool isOpen() const { return veslora::isOpen(m_shown.state); }
    [[nodiscard]] double islandWidth() const { return m_shown.layout.width; }
    [[nodiscard]] double islandHeight() const { return m_shown.layout.height; }
    [[nodiscard]] double topRadius() const { return m_shown.layout.topRadius; }
    [[nodiscard]] double bottomRadius() const { return m_shown.layout.bottomRadius; }
    [[nodiscard]] double wingWidth() const { return m_shown.wingWidth; }
    [[nodiscard]] double notchWidth() const { return m_geometry.notch.width; }
    [[nodiscard]] double notchHeight() const { return m_geometry.notch.height; }
    [[nodiscard]] AgentsModel* agents() const { return m_models.agents; }
    [[nodiscard]] KeepAwakeModel* keepAwake() const { return m_models.keepAwake; }
    [[nodiscard]] TimerModel* timer() const { return m_models.timer; }
    [[nodiscard]] RackModel* rack() const { return &m_rack; }
    [[nodiscard]] SystemSampler* sampler() const { return &m_sampler; }

  signals:
    /// Comes before `layoutChanged`, so that a view on its way out never takes the next one's size.
    void contentChanged();
    void layoutChanged();
    void alertCameOnScreen();

  private:
    struct Shown {
        IslandState state = IslandState::closed;
        Content content = Nothing;
        QString subject;
        IslandLayout layout;
        double wingWidth = 0;
        bool operator==(const Shown&) const = default;
    };
    [[nodiscard]] Shown judge() const;
    [[nodiscard]] static Content contentOf(IslandState state, bool hasRequest);
    void refresh();

    NotchGeometry m_geometry;
    IslandModels m_models;
    RackModel& m_rack;
    SystemSampler& m_sampler;
    const Defaults& m_settings;
    const TextMeasuring& m_measuring;
    bool m_isExpanded = false;
    Timestamp m_clock;
    Shown m_shown;
    bool m_isAlertOnScreen = false;
};

} // namespace veslora
