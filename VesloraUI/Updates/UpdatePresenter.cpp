// SPDX-License-Identifier: MIT
#include "VesloraUI/Updates/UpdatePresenter.h"

#include "VesloraCore/Text/ShellQuote.h"
#include "VesloraCore/Text/VisibleText.h"

#include <QClipboard>
#include <QGuiApplication>

#include <limits>
#include <sstream>

namespace veslora {

void UpdatePresenter::start() {
    follow(m_updater, &AppcastUpdater::changed);
}

void UpdatePresenter::read() {
    // A window that is about to close keeps what it showed.
    if (m_updater->state().step != AppcastUpdater::Step::none) {
        show(m_shown, shownOf(m_updater->state()));
    }
}

QString UpdatePresenter::harmless(const std::string& notes) {
    QStringList lines;
    std::istringstream stream(notes);
    for (std::string line; std::getline(stream, line);) {
        // A line may well be long: it wraps.
        lines << QString::fromStdString(
            VisibleText::spelled(line, std::numeric_limits<std::size_t>::max()).text);
    }
    return lines.join(u'\n');
}

UpdatePresenter::Shown UpdatePresenter::shownOf(const AppcastUpdater::State& state) const {
    using Step = AppcastUpdater::Step;
    const QString version = QString::fromStdString(state.item.version.text());
    const QString running = tr("You have %1.").arg(QString::fromStdString(m_updater->version()));
    const bool isDone = state.step == Step::installed || state.step == Step::byHand;
    Shown shown{.notes = isDone ? QString() : harmless(state.item.notes), .closing = tr("Close")};
    switch (state.step) {
    case Step::none:
        break;
    case Step::checking:
        shown.headline = tr("Looking for updates…");
        shown.closing = tr("Cancel");
        break;
    case Step::nothingNewer:
        shown.headline = tr("Veslora is up to date.");
        shown.detail = running;
        break;
    case Step::failed:
        shown.headline = tr("The update failed.");
        shown.detail = reason(state.failure);
        break;
    case Step::offered:
        shown.headline = tr("Veslora %1 is available").arg(version);
        shown.detail = running;
        shown.closing = tr("Later");
        shown.isOffered = true;
        break;
    case Step::downloading:
        shown.headline = tr("Downloading Veslora %1…").arg(version);
        shown.closing = tr("Cancel");
        shown.isDownloading = true;
        shown.progress = state.progress;
        break;
    case Step::installing:
        shown.headline = tr("Installing Veslora %1…").arg(version);
        shown.detail = tr("Your system may ask for a password.");
        if (state.isOverdue) {
            shown.detail =
                tr("The system's installer is taking long. If nothing comes of it, in a terminal, type:");
            shown.command = installCommand();
        }
        break;
    case Step::installed:
        shown.headline = tr("Veslora %1 is installed.").arg(version);
        shown.detail = tr("It takes over once this window is closed and nothing is going on.");
        break;
    case Step::byHand:
        shown.headline = tr("Veslora %1 can be installed by hand.").arg(version);
        shown.detail = reason(state.outcome);
        shown.command = installCommand();
        break;
    }
    return shown;
}

QString UpdatePresenter::installCommand() const {
    return QStringLiteral("sudo apt install ") +
           QString::fromStdString(shellQuoted(m_updater->packagePath()));
}

QString UpdatePresenter::reason(UpdateFailure failure) {
    switch (failure) {
    case UpdateFailure::unreachable:
        return tr("The server can't be reached. Is the computer online?");
    case UpdateFailure::slow:
        return tr("The server took too long to answer.");
    case UpdateFailure::insecure:
        return tr("There is no safe connection to the server.");
    case UpdateFailure::missing:
        return tr("The server doesn't have what it should have.");
    case UpdateFailure::tooLarge:
        return tr("The server sent more than it should.");
    case UpdateFailure::incomplete:
        return tr("The server sent less than it should.");
    case UpdateFailure::badSignature:
        return tr("What the server sent isn't signed by Veslora's makers. Nothing of it was used.");
    case UpdateFailure::unreadable:
        return tr("This version can't read what the server sent.");
    case UpdateFailure::noPackage:
        return tr("There is no version for this kind of computer.");
    case UpdateFailure::folder:
        return tr("The download can't be saved. Is the disk full?");
    case UpdateFailure::changed:
        return tr("The download was changed after it was checked. It was not installed.");
    case UpdateFailure::helper:
        break;
    }
    return tr("A part of Veslora doesn't work. Installing Veslora again may help.");
}

QString UpdatePresenter::reason(InstallOutcome outcome) {
    switch (outcome) {
    case InstallOutcome::absent:
        return tr("This system has no installer that Veslora can ask. In a terminal, type:");
    case InstallOutcome::forbidden:
        return tr("The system's installer doesn't allow it. In a terminal, an administrator may type:");
    case InstallOutcome::busy:
        return tr("The system's installer is busy. Later, in a terminal, type:");
    default:
        return tr("The system's installer couldn't do it. In a terminal, type:");
    }
}

void UpdatePresenter::install() {
    m_updater->install();
}

void UpdatePresenter::skip() {
    m_updater->skip();
}

void UpdatePresenter::close() {
    if (m_shown.isDownloading) {
        m_updater->cancel();
    } else {
        m_updater->dismiss();
    }
}

void UpdatePresenter::copyCommand() {
    QGuiApplication::clipboard()->setText(m_shown.command);
}

} // namespace veslora
