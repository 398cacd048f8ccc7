// SPDX-License-Identifier: MIT
#include "VesloraUI/Updates/UpgradeWatch.h"

#include "VesloraUI/Platform/DirectoryWatcher.h"
#include "VesloraUI/Platform/Logs.h"
#include "VesloraUI/Platform/ProgramRunning.h"
#include "VesloraUI/Platform/Scheduler.h"

#include <utility>

namespace veslora {

namespace {

/// Whether both are the same file. Its times don't count: an installer may set them at any moment.
bool isSameFile(const FileStat& one, const FileStat& other) {
    return one.device == other.device && one.inode == other.inode && one.size == other.size;
}

} // namespace

UpgradeWatch::UpgradeWatch(const Seams& seams, std::string program, Client client)
    : m_seams(seams), m_program(std::move(program)), m_client(std::move(client)) {}

UpgradeWatch::~UpgradeWatch() = default;

void UpgradeWatch::follow() {
    const auto file = present();
    if (!file || file->isOurs) {
        return;
    }
    m_running = file;
    const std::string folder = m_program.substr(0, m_program.rfind('/'));
    // An installer writes beside it and renames.
    m_watch = m_seams.watcher.watch(folder, DirectoryChanges::movedInto, [this] { folderChanged(); });
}

std::optional<FileStat> UpgradeWatch::present() const {
    const auto file = m_seams.files.stat(m_program, Links::refuse);
    return file && file->isRegular ? file : std::nullopt;
}

bool UpgradeWatch::isReplaced() const {
    const auto file = present();
    // In the midst of an upgrade, or after a removal, there is nothing that could take over.
    return m_running && file && !file->isOurs && !isSameFile(*file, *m_running);
}

void UpgradeWatch::folderChanged() {
    if (isReplaced()) {
        qCInfo(Logs::start, "another version is installed; it takes over once nothing goes on here");
        m_trial.cancel();
        // What else the installer has to do is done by then.
        tryLater(settling);
    }
}

void UpgradeWatch::tryLater(double seconds) {
    m_wait = m_seams.scheduler.after(seconds, [this] { tryNow(); });
}

void UpgradeWatch::tryNow() {
    const auto file = present();
    if (!file || !isReplaced()) {
        return;
    }
    if (!m_client.isAtRest()) {
        tryLater(settling);
        return;
    }
    // It may lack a library that is installed after it; then it must not be what is left.
    m_trial = m_seams.programs.run({m_program, "--version"}, {}, answerTime,
                                   [this, file = *file](const ProgramRunning::Result& result) {
                                       finish(file, result.isDone && !result.output.empty());
                                   });
}

void UpgradeWatch::finish(const FileStat& tried, bool isSound) {
    const auto file = present();
    // Of a file that has been replaced meanwhile the trial says nothing.
    const bool isStillThere = file && isSameFile(*file, tried);
    if (isStillThere && !isSound) {
        qCWarning(Logs::start, "the version that is installed does not start; this one goes on");
        tryLater(patience);
    } else if (!isStillThere || !m_client.isAtRest()) {
        tryLater(settling);
    } else {
        m_running.reset();
        m_watch.reset();
        m_client.takeOver();
    }
}

} // namespace veslora
