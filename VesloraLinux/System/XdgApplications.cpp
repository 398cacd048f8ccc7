// SPDX-License-Identifier: MIT
#include "VesloraLinux/System/XdgApplications.h"

#include "VesloraUI/Platform/Logs.h"

namespace veslora {

/// First asks whether anything opens such an address: told to open one that nothing does, some desktops start
/// a browser with it.
void XdgApplications::open(const std::string& bundleID) {
    if (bundleID != "com.spotify.client" || m_running.count() > 0) {
        return;
    }
    auto* const query = new QProcess(&m_running);
    query->setStandardErrorFile(QProcess::nullDevice());
    QObject::connect(query, &QProcess::finished, query, [query] {
        query->deleteLater();
        if (query->readAllStandardOutput().trimmed().isEmpty()) {
            qCInfo(Logs::system, "nothing on this desktop opens Spotify's addresses");
        } else {
            QProcess::startDetached(QStringLiteral("xdg-open"), {QStringLiteral("spotify:")});
        }
    });
    QObject::connect(query, &QProcess::errorOccurred, query, &QObject::deleteLater);
    query->start(QStringLiteral("xdg-mime"), {QStringLiteral("query"), QStringLiteral("default"),
                                              QStringLiteral("x-scheme-handler/spotify")});
}

} // namespace veslora
