// SPDX-License-Identifier: MIT
// The seam for what Spotify itself tells of its player. Main thread only.
#pragma once

#include "VesloraCore/Music/SpotifyNotification.h"

#include <QObject>

namespace veslora {

/// Silent where Spotify does not run.
class SpotifyNotifications : public QObject {
    Q_OBJECT

  public:
    /// Begins to listen; nothing is told before, nor within this call. Once is enough.
    virtual void start() = 0;

  signals:
    void playbackStateChanged(const veslora::SpotifyNotification::UserInfo& userInfo);
};

} // namespace veslora
