// SPDX-License-Identifier: MIT
// What the log says of a call over a bus that came to nothing. Any thread.
#pragma once

#include <QDBusError>
#include <QLoggingCategory>
#include <QString>

namespace veslora::BusErrors {

/// Whether nobody serves the name, as on a desktop that lacks the service.
[[nodiscard]] bool isOfAbsence(const QDBusError& error);

/// Tells by its name that `call` failed: as an information where nobody is there to serve it.
void tell(const QLoggingCategory& (*category)(), const QString& call, const QDBusError& error);

} // namespace veslora::BusErrors
