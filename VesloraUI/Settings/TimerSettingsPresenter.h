// SPDX-License-Identifier: MIT
// The sounds that may end a timer, ready to be picked from; the one that is picked is heard once.
#pragma once

#include <QList>
#include <QObject>
#include <QQmlEngine>
#include <QString>

namespace veslora {

class Defaults;
class SoundPlaying;

class TimerSettingsPresenter : public QObject, public QQmlParserStatus {
    Q_OBJECT
    QML_ELEMENT
    Q_INTERFACES(QQmlParserStatus)
    /// As people read them.
    Q_PROPERTY(QList<QString> sounds READ sounds CONSTANT FINAL)
    /// The place of the stored one among them; -1 for a text that names none of them.
    Q_PROPERTY(int sound READ sound NOTIFY soundChanged FINAL)

  public:
    using QObject::QObject;

    void classBegin() override {}
    void componentComplete() override;

    [[nodiscard]] static QList<QString> sounds();
    [[nodiscard]] int sound() const { return m_sound; }

    /// Stores a sound by its place and plays it, unless it is the stored one or none at all. A place that
    /// there is not does nothing.
    Q_INVOKABLE void chooseSound(int place);

  signals:
    void soundChanged();

  private:
    void readSettings();

    Defaults* m_settings = nullptr;
    SoundPlaying* m_player = nullptr;
    int m_sound = -1;
};

} // namespace veslora
