// SPDX-License-Identifier: MIT
// The seam for whether another application can be controlled. Main thread only.
#pragma once

#include <QObject>

#include <cstdint>
#include <string>

namespace veslora {

enum class AutomationStatus : std::uint8_t {
    allowed,
    appNotRunning, ///< or not known yet
};

class AutomationPermission : public QObject {
    Q_OBJECT

  public:
    /// Of the application of that identifier, such as "com.spotify.client". From the first question on,
    /// `statusChanged` tells when the answer is another one.
    [[nodiscard]] virtual AutomationStatus status(const std::string& bundleID) = 0;

  signals:
    void statusChanged();
};

} // namespace veslora
