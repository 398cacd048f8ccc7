// SPDX-License-Identifier: MIT
// Watches one alert until it is on screen: its room at full opacity, whole inside the island, in a frame
// that was drawn. Only then does the island take clicks there, and from then on it judges the presses that
// decide something. It belongs to one alert for its whole life. Main thread only.
#pragma once

#include "VesloraCore/Agents/AnswerGate.h"
#include "VesloraUI/Island/NotchOutline.h"
#include "VesloraUI/Platform/Task.h"
#include "VesloraUI/Style/PressJudge.h"

#include <QPointer>
#include <QQmlParserStatus>
#include <QQuickItem>

#include <optional>

namespace veslora {

class FrameClock;
class Scheduler;

// Qt tells qmllint of a base only by the name that is written here, so it has to be the whole one.
class AlertGate : public veslora::PressJudge, public QQmlParserStatus {
    Q_OBJECT
    QML_ELEMENT
    Q_INTERFACES(QQmlParserStatus)
    /// What holds the alert's text and keys.
    Q_PROPERTY(QQuickItem* room MEMBER m_room REQUIRED FINAL)
    /// The island as it is drawn.
    Q_PROPERTY(veslora::NotchOutline* outline MEMBER m_outline REQUIRED FINAL)
    /// The text that a press answers, an opaque and unchanging part of the room. Null where no key decides
    /// anything: presses are not judged then.
    Q_PROPERTY(QQuickItem* text READ text WRITE setText FINAL)
    /// False once the alert is on its way out.
    Q_PROPERTY(bool isWatching READ isWatching WRITE setWatching FINAL)
    /// The alert was on screen once, whole.
    Q_PROPERTY(bool isOnScreen READ isOnScreen NOTIFY isOnScreenChanged FINAL)

  public:
    /// Between two ticks, by which a stall shows; the same as the fuse's, so that both fall together.
    static constexpr double period = 0.1;
    /// Of the room: its text, which is drawn at 0.99 of that, is then at no less than 0.95.
    static constexpr double wholeOpacity = 0.96;

    explicit AlertGate(QObject* parent = nullptr) : PressJudge(parent) {}

    void classBegin() override {}
    void componentComplete() override;

    [[nodiscard]] QQuickItem* text() const { return m_text; }
    void setText(QQuickItem* text);
    [[nodiscard]] bool isWatching() const { return m_isWatching; }
    void setWatching(bool isWatching);
    [[nodiscard]] bool isOnScreen() const { return m_isOnScreen; }

    [[nodiscard]] bool isArmed() const override { return m_isArmed; }
    void press(std::uint32_t eventTime) override;
    [[nodiscard]] bool release(std::uint32_t eventTime) override;
    [[nodiscard]] bool act() override;

  signals:
    void isOnScreenChanged();

  private:
    void update();
    void watchWindow(QQuickWindow* window);
    void frameSwapped();
    void frameShown(std::uint32_t eventTime);
    /// Whether the program has not been held up. If it was, the alert has to be seen all over again.
    [[nodiscard]] bool isLive();
    void lookAgain();
    void updateArmed();
    /// Whether the room is drawn at full opacity, unclipped, inside the island and inside the window.
    [[nodiscard]] bool isWhole() const;
    /// Whether something else is known to be on screen where the text should be.
    [[nodiscard]] bool isCovered() const;
    [[nodiscard]] Scheduler& scheduler() const;
    [[nodiscard]] FrameClock& frameClock() const;
    [[nodiscard]] double now() const;

    QPointer<QQuickItem> m_room;
    QPointer<NotchOutline> m_outline;
    QPointer<QQuickItem> m_text;
    QPointer<QQuickWindow> m_window;
    bool m_isComplete = false;
    bool m_isWatching = true;
    bool m_isOnScreen = false;
    bool m_isArmed = false;
    std::optional<AnswerGate> m_gate; ///< only while there is something to judge
    Task m_ticks;
    Task m_mark;
    Task m_arming;
};

} // namespace veslora
