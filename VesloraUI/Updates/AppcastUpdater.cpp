// SPDX-License-Identifier: MIT
#include "VesloraUI/Updates/AppcastUpdater.h"

#include "VesloraCore/Updates/UpdateSchedule.h"
#include "VesloraUI/Platform/Files.h"
#include "VesloraUI/Platform/Logs.h"
#include "VesloraUI/Platform/Scheduler.h"
#include "VesloraUI/Store/Defaults.h"
#include "VesloraUI/Store/SettingsKeys.h"

#include <algorithm>
#include <utility>

namespace veslora {

namespace {

// Seconds in which the helper has long given up by itself.
constexpr double checkLimit = 60;
constexpr double downloadLimit = 30 * 60;
constexpr double verifyLimit = 60;

constexpr double betweenLooks = 0.25; ///< at what has come of a package, in seconds

bool isBusy(AppcastUpdater::Step step) {
    using Step = AppcastUpdater::Step;
    return step == Step::checking || step == Step::downloading || step == Step::installing;
}

} // namespace

AppcastUpdater::AppcastUpdater(Build build, const Seams& seams, Defaults& settings)
    : m_build(std::move(build)), m_seams(seams), m_settings(settings),
      m_helper(seams.programs, m_build.helper), m_timer(seams.scheduler, settings) {
    connect(&m_timer, &UpdateTimer::turned, this, [this](bool isOn) {
        if (onAutomaticallyChecksForUpdatesChange) {
            onAutomaticallyChecksForUpdatesChange(isOn);
        }
    });
}

AppcastUpdater::~AppcastUpdater() = default;

void AppcastUpdater::start() {
    m_timer.start([this] { check(false); });
}

bool AppcastUpdater::canCheckForUpdates() const {
    return !isBusy(m_state.step) || (m_state.step == Step::installing && m_isOutOfSight);
}

void AppcastUpdater::setAutomaticallyChecksForUpdates(bool isOn) {
    m_settings.set(SettingsKeys::checkForUpdates, isOn);
}

void AppcastUpdater::checkForUpdates() {
    if (!isBusy(m_state.step)) {
        check(true);
        return;
    }
    m_isAskedFor = true;
    setOutOfSight(false);
    emit wantsToShow(true);
}

void AppcastUpdater::check(bool isAskedFor) {
    m_timer.looked();
    // What the user is looking at stays until they are done with it.
    if (!isAskedFor && m_state.step != Step::none) {
        return;
    }
    m_isAskedFor = isAskedFor;
    m_task = m_helper.ask(FeedQuestion{.feed = m_build.feed,
                                       .key = m_build.key,
                                       .version = m_build.version,
                                       .kind = std::string(Appcast::debianPackage),
                                       .architecture = m_build.architecture},
                          checkLimit, [this](const UpdateAnswer& answer) { checked(answer); });
    show({.step = Step::checking});
    if (isAskedFor) {
        emit wantsToShow(true);
    }
}

void AppcastUpdater::checked(const UpdateAnswer& answer) {
    if (const auto* const item = std::get_if<AppcastItem>(&answer)) {
        offer(*item);
    } else if (std::holds_alternative<NothingNewer>(answer)) {
        qCInfo(Logs::updates, "there is no newer version");
        conclude({.step = Step::nothingNewer});
    } else {
        const auto* const failure = std::get_if<UpdateFailure>(&answer);
        const UpdateFailure why = failure != nullptr ? *failure : UpdateFailure::helper;
        qCWarning(Logs::updates, "can't look for updates: %s", rawValue(why).data());
        if (why == UpdateFailure::unreachable) {
            m_timer.reachedNobody();
        }
        conclude({.step = Step::failed, .failure = why});
    }
}

/// Shows how a check ended to one who asked for it; nobody else hears of it.
void AppcastUpdater::conclude(State state) {
    show(m_isAskedFor ? std::move(state) : State());
}

/// The helper has compared the versions; what it says is looked at once more, as an older one must never be
/// installed.
void AppcastUpdater::offer(const AppcastItem& item) {
    const auto running = ReleaseVersion::parse(m_build.version);
    if (!running || item.version <= *running) {
        conclude({.step = Step::nothingNewer});
        return;
    }
    if (!m_isAskedFor && !mayOffer(item)) {
        conclude({});
        return;
    }
    qCInfo(Logs::updates, "version %s is offered", item.version.text().c_str());
    m_settings.set(SettingsKeys::updateShown, item.version.text());
    m_settings.set(SettingsKeys::updateShownAt, m_seams.scheduler.now());
    show({.step = Step::offered, .item = item});
    emit wantsToShow(m_isAskedFor);
}

bool AppcastUpdater::mayOffer(const AppcastItem& item) const {
    const std::string& version = item.version.text();
    if (m_settings.stringValue(SettingsKeys::updateSkipped) == version) {
        return false;
    }
    return m_settings.stringValue(SettingsKeys::updateShown) != version ||
           UpdateSchedule::mayShowAgain(m_settings.doubleValue(SettingsKeys::updateShownAt),
                                        m_seams.scheduler.now());
}

std::string AppcastUpdater::packagePath() const {
    return m_build.folder + "/" + Appcast::fileName(m_state.item.version, m_state.item.architecture);
}

PackageQuestion AppcastUpdater::question(PackageQuestion::Job job) const {
    return {.job = job, .key = m_build.key, .folder = m_build.folder, .item = m_state.item};
}

/// The helper refuses one that others may enter.
bool AppcastUpdater::prepareFolder() {
    constexpr std::uint32_t ours = 0700;
    std::error_code error = m_seams.files.makeDirectory(m_build.folder, ours);
    if (!error) {
        const OpenedFolder folder = m_seams.files.openFolder(m_build.folder);
        error = folder ? folder->setMode(ours) : folder.error;
    }
    if (error) {
        qCWarning(Logs::updates, "can't use %s: %s", m_build.folder.c_str(), error.message().c_str());
    }
    return !error;
}

void AppcastUpdater::install() {
    if (m_state.step != Step::offered) {
        return;
    }
    if (!prepareFolder()) {
        fail(UpdateFailure::folder);
        return;
    }
    m_task = m_helper.ask(question(PackageQuestion::Job::download), downloadLimit,
                          [this](const UpdateAnswer& answer) { downloaded(answer); });
    m_watch = m_seams.scheduler.every(betweenLooks, Precision::exact, [this] { readProgress(); });
    State state = m_state;
    state.step = Step::downloading;
    state.progress = 0;
    show(std::move(state));
}

void AppcastUpdater::readProgress() {
    const auto status = m_seams.files.stat(packagePath() + ".part", Links::refuse);
    State state = m_state;
    const auto length = static_cast<double>(state.item.length);
    state.progress =
        status ? std::clamp(static_cast<double>(status->size) / length, 0.0, 1.0) : state.progress;
    show(std::move(state));
}

void AppcastUpdater::cancel() {
    if (m_state.step != Step::downloading) {
        return;
    }
    m_task.cancel();
    m_watch.cancel();
    // A helper that is ended leaves what it was writing.
    m_seams.files.remove(packagePath() + ".part");
    State state = m_state;
    state.step = Step::offered;
    show(std::move(state));
}

void AppcastUpdater::downloaded(const UpdateAnswer& answer) {
    m_watch.cancel();
    if (!std::holds_alternative<PackageReady>(answer)) {
        fail(answer);
        return;
    }
    // Time may pass until the system has it, in which another program may write the file: so it is looked at
    // again right before.
    m_task = m_helper.ask(question(PackageQuestion::Job::verify), verifyLimit,
                          [this](const UpdateAnswer& again) { verified(again); });
    setOutOfSight(false);
    State state = m_state;
    state.step = Step::installing;
    show(std::move(state));
}

void AppcastUpdater::verified(const UpdateAnswer& answer) {
    if (!std::holds_alternative<PackageReady>(answer)) {
        fail(answer);
        return;
    }
    m_task = m_seams.packages.install(packagePath(), [this](InstallOutcome outcome) { ended(outcome); });
    m_watch = m_seams.scheduler.after(overdueAfter, [this] {
        qCWarning(Logs::updates, "the system's installer is taking long");
        State state = m_state;
        state.isOverdue = true;
        show(std::move(state));
    });
}

void AppcastUpdater::ended(InstallOutcome outcome) {
    qCInfo(Logs::updates, "the system's installer ended with %d", static_cast<int>(outcome));
    m_watch.cancel();
    State state = m_state;
    state.outcome = outcome;
    state.isOverdue = false;
    switch (outcome) {
    case InstallOutcome::installed:
        state.step = Step::installed;
        m_seams.files.remove(packagePath());
        break;
    case InstallOutcome::cancelled:
        state.step = Step::offered;
        break;
    default:
        state.step = Step::byHand;
    }
    show(std::move(state));
    emit wantsToShow(false);
}

void AppcastUpdater::fail(const UpdateAnswer& answer) {
    const auto* const failure = std::get_if<UpdateFailure>(&answer);
    const UpdateFailure why = failure != nullptr ? *failure : UpdateFailure::helper;
    qCWarning(Logs::updates, "can't bring the update: %s", rawValue(why).data());
    show({.step = Step::failed, .failure = why});
    emit wantsToShow(false);
}

void AppcastUpdater::skip() {
    if (m_state.step == Step::offered) {
        m_settings.set(SettingsKeys::updateSkipped, m_state.item.version.text());
        show({});
    }
}

void AppcastUpdater::dismiss() {
    cancel();
    if (m_state.step == Step::installing) {
        setOutOfSight(true);
        return;
    }
    m_task.cancel();
    show({});
}

void AppcastUpdater::show(State state) {
    if (std::exchange(m_state, std::move(state)) == m_state) {
        return;
    }
    emit changed();
    tellWhetherOneMayCheck();
}

void AppcastUpdater::setOutOfSight(bool isOutOfSight) {
    m_isOutOfSight = isOutOfSight;
    tellWhetherOneMayCheck();
}

void AppcastUpdater::tellWhetherOneMayCheck() {
    const bool canCheck = canCheckForUpdates();
    if (std::exchange(m_couldCheck, canCheck) != canCheck && onCanCheckForUpdatesChange) {
        onCanCheckForUpdatesChange(canCheck);
    }
}

} // namespace veslora
