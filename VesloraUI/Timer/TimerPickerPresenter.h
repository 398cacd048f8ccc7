// SPDX-License-Identifier: MIT
// The length that the idle timer offers, ready for display.
#pragma once

#include "VesloraUI/Timer/TimerModel.h"

#include <QList>
#include <QObject>
#include <QQmlEngine>
#include <QString>

namespace veslora {

class TimerPickerPresenter : public QObject, public QQmlParserStatus {
    Q_OBJECT
    QML_ELEMENT
    Q_INTERFACES(QQmlParserStatus)
    Q_PROPERTY(veslora::TimerModel* timer MEMBER m_timer REQUIRED FINAL)
    Q_PROPERTY(bool isWide MEMBER m_isWide REQUIRED FINAL)
    Q_PROPERTY(QString caption READ caption NOTIFY captionChanged FINAL)
    /// Whether there is room to tell how the length is set.
    Q_PROPERTY(bool hasHint READ hasHint NOTIFY hasHintChanged FINAL)
    Q_PROPERTY(double seconds READ seconds NOTIFY secondsChanged FINAL)
    /// How far up the ladder of lengths it stands.
    Q_PROPERTY(double fraction READ fraction NOTIFY secondsChanged FINAL)
    Q_PROPERTY(int segments READ segments CONSTANT FINAL)
    Q_PROPERTY(QList<int> presets READ presets CONSTANT FINAL)

  public:
    using QObject::QObject;

    void classBegin() override {}
    void componentComplete() override;

    [[nodiscard]] QString caption() const { return m_caption; }
    [[nodiscard]] bool hasHint() const { return m_hasHint; }
    [[nodiscard]] double seconds() const { return m_seconds; }
    [[nodiscard]] double fraction() const { return m_fraction; }
    [[nodiscard]] static int segments();
    /// Minutes.
    [[nodiscard]] static QList<int> presets();

    Q_INVOKABLE [[nodiscard]] static QString presetHelp(int minutes);

  signals:
    void captionChanged();
    void hasHintChanged();
    void secondsChanged();

  private:
    void readTimer();

    TimerModel* m_timer = nullptr;
    bool m_isWide = false;
    QString m_caption;
    bool m_hasHint = true;
    double m_seconds = 0;
    double m_fraction = 0;
};

} // namespace veslora
