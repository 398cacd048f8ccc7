// SPDX-License-Identifier: MIT
// What the island shows and how large it is: the one model that its root view reads. A new one is made with
// each layout; its owner tells it of each new judgement and of each change of the rack. Main thread only.
#pragma once

#include "VesloraCore/Island/IslandState.h"
#include "VesloraCore/Island/NotchGeometry.h"
#include "VesloraUI/Island/IslandPresentation.h"
#include "VesloraUI/Widgets/IslandModels.h"

#include <QObject>
#include <QQmlEngine>
#include <QString>

namespace veslora {

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
    /// Points: where the rack begins below the screen's edge, how high it is, what is left free beside it,
    /// and where the tray begins that is below it while it is edited.
    Q_PROPERTY(double rackTop READ rackTop CONSTANT FINAL)
    Q_PROPERTY(double rackHeight READ rackHeight CONSTANT FINAL)
    Q_PROPERTY(double rackPadding READ rackPadding CONSTANT FINAL)
    Q_PROPERTY(double trayTop READ trayTop CONSTANT FINAL)
    Q_PROPERTY(veslora::IslandModels* models READ models CONSTANT FINAL)

  public:
    /// What is on the island. States whose views have not landed show nothing.
    enum Content {
        Nothing,
        TimerRunning,
        ClaudeFinished,
        ClaudeWorking,
        KeepAwake,
        Metronome,
        Music,
        TimerDone,
        ClaudeRequest,
        ClaudeNotice,
        Rack,
    };
    Q_ENUM(Content)

    /// Shows what was judged last. The models and the judgement must outlive it.
    NotchViewModel(const NotchGeometry& geometry, IslandModels& models,
                   const IslandPresentation& presentation);

    [[nodiscard]] bool isExpanded() const { return m_isExpanded; }
    void setExpanded(bool isExpanded);

    /// Takes in a new judgement, and the rack's width and edit mode as they are now.
    void refresh();

    [[nodiscard]] IslandState state() const { return m_shown.state; }
    [[nodiscard]] Content content() const { return m_shown.content; }
    [[nodiscard]] QString contentIdentity() const;
    [[nodiscard]] QString subject() const { return m_shown.subject; }
    /// Whether the alert that shows is on screen already, as its view has said. Until then a click that
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
    [[nodiscard]] double rackTop() const { return m_geometry.notch.height + NotchGeometry::rackTopInset; }
    [[nodiscard]] static double rackHeight() { return NotchGeometry::rackHeight; }
    [[nodiscard]] static double rackPadding() { return RackModel::sidePadding; }
    [[nodiscard]] double trayTop() const { return rackTop() + rackHeight() + NotchGeometry::rackBottomInset; }
    [[nodiscard]] IslandModels* models() const { return &m_models; }

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
    [[nodiscard]] Shown look() const;
    [[nodiscard]] static Content contentOf(IslandState state, bool hasRequest);

    NotchGeometry m_geometry;
    IslandModels& m_models;
    const IslandPresentation& m_presentation;
    bool m_isExpanded = false;
    Shown m_shown;
    bool m_isAlertOnScreen = false;
};

} // namespace veslora
