// SPDX-License-Identifier: MIT
// The seam that loads a cover from the web. Main thread only.
#pragma once

#include "VesloraUI/Platform/Task.h"

#include <QImage>
#include <QUrl>

#include <functional>

namespace veslora {

class ArtworkLoading {
  public:
    virtual ~ArtworkLoading() = default;

    /// Loads the image at an https address, and decodes it away from the main thread. `done` is called once,
    /// later and never within this call, with a null image where the server gives none in time, redirects to
    /// anything but https, or gives one of too many bytes or pixels. Cancelling drops `done`, and the load
    /// where that is possible.
    [[nodiscard]] virtual Task load(const QUrl& url, std::function<void(const QImage&)> done) = 0;
};

} // namespace veslora
