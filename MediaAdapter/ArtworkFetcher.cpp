// SPDX-License-Identifier: MIT
#include "MediaAdapter/ArtworkFetcher.h"

#include "MediaAdapter/Logs.h"

#include <algorithm>
#include <chrono>
#include <string_view>
#include <utility>

namespace veslora {
namespace {

using namespace std::chrono_literals;

/// A process is not cheap, and a player that runs through its list changes tracks quickly.
constexpr auto betweenStarts = 250ms;
/// The process keeps to five seconds itself, unless it hangs.
constexpr auto timeout = 8s;
constexpr qsizetype largestPicture = qsizetype{1} << 20;

bool isFile(std::string_view url) {
    return url.starts_with("file:");
}

} // namespace

ArtworkFetcher::ArtworkFetcher(const QString& program) : m_program(program) {
    m_start.setSingleShot(true);
    m_timeout.setSingleShot(true);
    connect(&m_start, &QTimer::timeout, this, &ArtworkFetcher::start);
    connect(&m_timeout, &QTimer::timeout, this, [this] { finished({}); });
}

void ArtworkFetcher::want(const std::string& url, const std::string& track) {
    const bool isSameUrl = url == m_url;
    const bool isSameTrack = std::exchange(m_track, track) == track;
    if (isSameUrl && (isSameTrack || !isFile(url))) {
        return;
    }
    drop();
    m_url = url;
    if (!isSameUrl) {
        m_artwork.clear();
    }
    if (isFile(url) || url.starts_with("https:")) {
        const auto elapsed =
            m_sinceStart.isValid() ? std::chrono::milliseconds(m_sinceStart.elapsed()) : betweenStarts;
        m_start.start(std::max(0ms, betweenStarts - elapsed));
    }
}

/// Lets go of a process without waiting for its end, which may have come already.
void ArtworkFetcher::drop() {
    m_start.stop();
    m_timeout.stop();
    if (QProcess* const process = std::exchange(m_process, nullptr)) {
        process->disconnect(this);
        if (process->state() == QProcess::NotRunning) {
            process->deleteLater();
            return;
        }
        connect(process, &QProcess::stateChanged, process, [process](QProcess::ProcessState state) {
            if (state == QProcess::NotRunning) {
                process->deleteLater();
            }
        });
        process->kill();
    }
}

/// The address goes by the standard input: everybody on the machine may read a process's arguments, and
/// addresses may hold a key of the user's.
void ArtworkFetcher::start() {
    m_sinceStart.start();
    m_process = new QProcess(this);
    m_process->setStandardErrorFile(QProcess::nullDevice());
    connect(m_process, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) {
            qCWarning(Logs::media, "can't start %s: %s", qUtf8Printable(m_program),
                      qUtf8Printable(m_process->errorString()));
            finished({});
        }
    });
    connect(m_process, &QProcess::finished, this, [this](int code, QProcess::ExitStatus status) {
        const bool isPicture = status == QProcess::NormalExit && code == 0;
        if (!isPicture) {
            qCInfo(Logs::media, "there is no artwork: %d", code);
        }
        finished(isPicture ? m_process->readAllStandardOutput() : QByteArray());
    });
    m_timeout.start(timeout);
    m_process->start(m_program, QStringList());
    if (m_process != nullptr) {
        m_process->write(m_url.data(), static_cast<qint64>(m_url.size()));
        m_process->closeWriteChannel();
    }
}

void ArtworkFetcher::finished(const QByteArray& picture) {
    drop();
    m_artwork = picture.size() <= largestPicture ? picture.toBase64().toStdString() : std::string();
    emit changed();
}

} // namespace veslora
