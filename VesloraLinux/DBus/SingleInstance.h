// SPDX-License-Identifier: MIT
// One program for each user, which others ask for what its command line offers. Main thread only.
#pragma once

#include "VesloraCore/Island/CommandLine.h"
#include "VesloraLinux/System/CommandListener.h"
#include "VesloraLinux/System/SupportLock.h"
#include "VesloraUI/Platform/Scheduler.h"

#include <QDBusConnection>
#include <QDBusContext>
#include <QObject>

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace veslora {

/// How the one that runs is found on the bus.
namespace RunningName {
inline const QString bus = QStringLiteral("org.veslora.Veslora");
inline const QString path = QStringLiteral("/org/veslora/Veslora");
inline const QString failure = QStringLiteral("org.veslora.Veslora.Failed");
} // namespace RunningName

/// The lock on the support directory makes it the only one everywhere; a bus name also shuts out a start with
/// another support directory. It is reached over the bus, and by a socket beside the lock.
class SingleInstance final : public QObject, protected QDBusContext {
    Q_OBJECT

  public:
    /// What the program does when it is asked; it was done, or not, when this returns.
    using Perform = std::function<CommandOutcome(const CommandLine::Ask&)>;

    SingleInstance(Scheduler& scheduler, SupportLock lock, std::optional<QDBusConnection> bus);
    ~SingleInstance() override;
    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;

    /// True when this is the only one: `perform` then serves the others from the next turn of the event loop
    /// on. False when another has the bus name, which `RunningInstance` can ask.
    [[nodiscard]] bool claim(Perform perform);

  public slots:
    // Asked for over the bus, by the names that the interface gives them.
    void OpenSettings();
    void Toggle();
    void NextPage();
    void PreviousPage();
    void Edit();
    void Pause(const QString& length);
    void Resume();
    void Quit();
    QString Status();
    QString ExportSettings();
    void ImportSettings(const QString& settings);
    QString InstallHooks(const QString& agent);
    QString RemoveHooks(const QString& agent);
    QString HooksStatus(const QString& agent);

  private:
    [[nodiscard]] bool takeName();
    void listen();
    CommandOutcome perform(const CommandLine::Ask& ask) const;
    QString performForBus(const CommandLine::Ask& ask);
    QString performWithText(Command command, const QString& text);
    void refuse(const QString& why);
    [[nodiscard]] CommandListener::Answer respond(const std::optional<std::string>& line) const;

    Scheduler& m_scheduler;
    SupportLock m_lock;
    std::optional<QDBusConnection> m_bus;
    Perform m_perform;
    std::unique_ptr<CommandListener> m_listener;
    bool m_hasName = false;
};

} // namespace veslora
