// SPDX-License-Identifier: MIT
// Looks for newer versions in a signed feed, and brings one and hands it to the system's installer when the
// user wants it. Whatever goes wrong leaves the program as it is. Main thread only.
#pragma once

#include "VesloraCore/Updates/UpdateMessages.h"
#include "VesloraUI/Platform/PackageInstalling.h"
#include "VesloraUI/Platform/Updating.h"
#include "VesloraUI/Updates/UpdateHelper.h"
#include "VesloraUI/Updates/UpdateTimer.h"

#include <QObject>
#include <QQmlEngine>

#include <cstdint>
#include <string>

namespace veslora {

class Files;

class AppcastUpdater final : public QObject, public Updating {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    Q_DISABLE_COPY_MOVE(AppcastUpdater)

  public:
    /// What the program was built with, and where its parts lie.
    struct Build {
        std::string feed; ///< the address, by https
        std::string key;  ///< base64
        std::string version;
        std::string architecture; ///< as Debian names it
        std::string helper;       ///< the helper's path
        std::string folder;       ///< where packages come to lie; made when one does
    };
    struct Seams {
        Scheduler& scheduler;
        Files& files;
        ProgramRunning& programs;
        PackageInstalling& packages;
    };

    /// Seconds after which an installation is overdue.
    static constexpr double overdueAfter = 600;

    enum class Step : std::uint8_t {
        none,         ///< there is nothing to show
        checking,     ///< also while nobody asked for it
        nothingNewer, ///< the user asked, and there is nothing newer
        failed,       ///< see `failure`
        offered,      ///< see `item`; so for the next ones
        downloading,  ///< see `progress`
        installing,   ///< the package is checked once more, or the system has it
        installed,    ///< the new version takes over when this program makes way for it
        byHand,       ///< the system's installer did not do it; see `outcome`, `packagePath`
    };
    struct State {
        Step step = Step::none;
        UpdateFailure failure = UpdateFailure::helper;
        AppcastItem item;
        double progress = 0; ///< 0 to 1
        InstallOutcome outcome = InstallOutcome::installed;
        bool isOverdue = false; ///< the system has had the package for long and may never be done
        bool operator==(const State&) const = default;
    };

    AppcastUpdater(Build build, const Seams& seams, Defaults& settings);
    ~AppcastUpdater() override;

    /// Begins to look by itself, from time to time.
    void start();

    [[nodiscard]] const State& state() const { return m_state; }
    [[nodiscard]] const std::string& version() const { return m_build.version; }
    /// Of the item.
    [[nodiscard]] std::string packagePath() const;

    [[nodiscard]] bool canCheckForUpdates() const override;
    [[nodiscard]] bool automaticallyChecksForUpdates() const override { return m_timer.isOn(); }
    void setAutomaticallyChecksForUpdates(bool isOn) override;
    [[nodiscard]] bool isAvailable() const override { return true; }
    /// Where something is under way, shows that and what comes of it instead.
    void checkForUpdates() override;

    /// Brings the offered package and has it installed; nothing at any other step.
    void install();
    /// Stops bringing it and offers it again.
    void cancel();
    /// Never again offers this version unless the user asks.
    void skip();
    /// The user does not want to see any of it now. What the system installs goes on.
    void dismiss();

  signals:
    void changed();
    /// There is something to see: because the user asked, or else without taking the focus from anything.
    void wantsToShow(bool isAskedFor);

  private:
    void check(bool isAskedFor);
    void checked(const UpdateAnswer& answer);
    void offer(const AppcastItem& item);
    [[nodiscard]] bool mayOffer(const AppcastItem& item) const;
    void conclude(State state);

    [[nodiscard]] bool prepareFolder();
    void downloaded(const UpdateAnswer& answer);
    void readProgress();
    void verified(const UpdateAnswer& answer);
    void ended(InstallOutcome outcome);
    void fail(const UpdateAnswer& answer);
    [[nodiscard]] PackageQuestion question(PackageQuestion::Job job) const;
    void show(State state);
    void setOutOfSight(bool isOutOfSight);
    void tellWhetherOneMayCheck();

    const Build m_build;
    Seams m_seams;
    Defaults& m_settings;
    UpdateHelper m_helper;
    UpdateTimer m_timer;
    State m_state;
    bool m_isAskedFor = false;
    bool m_isOutOfSight = false; ///< what is being installed was dismissed
    bool m_couldCheck = true;    ///< as it was told last
    Task m_task;                 ///< the helper, or the installer
    Task m_watch;                ///< of a download's progress, or an installation's length
};

} // namespace veslora
