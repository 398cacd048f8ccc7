// SPDX-License-Identifier: MIT
// Whom the helper trusts and how long it waits.
#pragma once

#include <QSslConfiguration>

#include <chrono>

namespace veslora {

struct FetchLimits {
    QSslConfiguration security = QSslConfiguration::defaultConfiguration();
    std::chrono::milliseconds feed = std::chrono::seconds(15); ///< and as long for its signature
    std::chrono::milliseconds package = std::chrono::minutes(20);
    std::chrono::milliseconds stall = std::chrono::seconds(30); ///< without a single byte
};

} // namespace veslora
