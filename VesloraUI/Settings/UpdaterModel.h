// SPDX-License-Identifier: MIT
// What views see of the updater. Main thread only.
#pragma once

#include <QObject>
#include <QQmlEngine>

namespace veslora {

class Updating;

class UpdaterModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    Q_DISABLE_COPY_MOVE(UpdaterModel)
    Q_PROPERTY(bool isAvailable READ isAvailable CONSTANT FINAL)
    Q_PROPERTY(bool canCheckForUpdates READ canCheckForUpdates NOTIFY canCheckForUpdatesChanged FINAL)
    Q_PROPERTY(bool automaticallyChecks READ automaticallyChecks WRITE setAutomaticallyChecks NOTIFY
                   automaticallyChecksChanged FINAL)

  public:
    /// The updater must outlive it; its two callbacks are the model's from now on.
    explicit UpdaterModel(Updating& updater);
    ~UpdaterModel() override;

    [[nodiscard]] bool isAvailable() const;
    [[nodiscard]] bool canCheckForUpdates() const { return m_canCheckForUpdates; }
    [[nodiscard]] bool automaticallyChecks() const { return m_automaticallyChecks; }
    /// Reaches the updater only where it holds the other value.
    void setAutomaticallyChecks(bool isOn);

    Q_INVOKABLE void checkForUpdates();

  signals:
    void canCheckForUpdatesChanged();
    void automaticallyChecksChanged();

  private:
    Updating& m_updater;
    bool m_canCheckForUpdates;
    bool m_automaticallyChecks;
};

} // namespace veslora
