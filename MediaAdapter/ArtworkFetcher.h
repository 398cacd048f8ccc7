// SPDX-License-Identifier: MIT
// The picture of what plays, fetched and decoded by another process, which a broken picture may take down.
// Main thread only.
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QProcess>
#include <QTimer>

#include <string>

namespace veslora {

class ArtworkFetcher : public QObject {
    Q_OBJECT

  public:
    /// `program` reads an address from its standard input and prints a picture.
    explicit ArtworkFetcher(const QString& program);

    /// Wants the picture at `url` for a track. A picture at another address is dropped at once, and so is
    /// what was still on its way. A file is read again for each track, as some players always write the same
    /// one.
    void want(const std::string& url, const std::string& track);

    /// The picture as base64; empty where there is none, or none yet.
    [[nodiscard]] const std::string& artwork() const { return m_artwork; }

  signals:
    void changed();

  private:
    void drop();
    void start();
    void finished(const QByteArray& picture);

    QString m_program;
    std::string m_url;
    std::string m_track;
    std::string m_artwork;
    QProcess* m_process = nullptr; ///< a child of ours while it runs
    QTimer m_start;
    QTimer m_timeout;
    QElapsedTimer m_sinceStart;
};

} // namespace veslora
