// SPDX-License-Identifier: MIT
#include "VesloraLinux/System/ArtworkLoader.h"

#include "VesloraUI/Platform/CoverDecoder.h"
#include "VesloraUI/Platform/Logs.h"

#include <QUrl>

#include <utility>

namespace veslora {

namespace {

/// The helper prints a small picture; what goes on beyond that is none.
constexpr qint64 outputCap = qint64{1} << 20;

} // namespace

void ArtworkLoader::finish(Load& load) {
    if (const auto run = std::exchange(load.listener->run, nullptr)) {
        run();
    }
}

Task ArtworkLoader::load(const QUrl& url, std::function<void(const QImage&)> done) {
    const auto load = std::make_shared<Load>();
    // Not the load itself, which keeps this callback.
    load->listener->run = [state = std::weak_ptr(load), done = std::move(done)] {
        const auto ended = state.lock();
        done(ended ? ended->image : QImage());
    };
    const bool isWanted = url.isValid() && url.scheme() == QLatin1String("https") && !url.host().isEmpty() &&
                          m_running.count() < mostAtOnce;
    if (isWanted) {
        run(load, url.toEncoded());
    } else {
        load->step = m_scheduler.after(0, [load] { finish(*load); });
    }
    return Task(load->listener);
}

void ArtworkLoader::run(const std::shared_ptr<Load>& load, const QByteArray& address) {
    auto* const process = new QProcess(&m_running);
    process->setStandardErrorFile(QProcess::nullDevice());
    load->step = m_scheduler.after(timeLimit, [process] { process->kill(); });
    QObject::connect(process, &QProcess::readyReadStandardOutput, process, [process] {
        if (process->bytesAvailable() > outputCap) {
            process->kill();
        }
    });
    QObject::connect(process, &QProcess::finished, process,
                     [this, process, load](int exitCode, QProcess::ExitStatus status) {
                         process->deleteLater();
                         const bool isGood = status == QProcess::NormalExit && exitCode == 0;
                         decode(load, isGood ? process->readAllStandardOutput() : QByteArray());
                     });
    // It may fail while it is still being started, within this very call.
    QObject::connect(
        process, &QProcess::errorOccurred, process,
        [this, process, load](QProcess::ProcessError error) {
            if (error == QProcess::FailedToStart) {
                qCWarning(Logs::system, "%s can't be started", qUtf8Printable(process->program()));
                process->deleteLater();
                decode(load, {});
            }
        },
        Qt::QueuedConnection);
    process->start(m_program, {});
    process->write(address);
    process->closeWriteChannel();
}

void ArtworkLoader::decode(const std::shared_ptr<Load>& load, const QByteArray& file) {
    const auto image = std::make_shared<QImage>();
    load->step = m_scheduler.background(
        [image, file] { *image = CoverDecoder::decode(file.toBase64().toStdString()); },
        [image, load] {
            load->image = *image;
            finish(*load);
        });
}

} // namespace veslora
