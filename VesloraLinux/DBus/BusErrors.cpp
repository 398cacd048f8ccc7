// SPDX-License-Identifier: MIT
#include "VesloraLinux/DBus/BusErrors.h"

namespace veslora::BusErrors {

bool isOfAbsence(const QDBusError& error) {
    // The bus's second word for it, where nothing may be started; the toolkit has no name for that one.
    return error.type() == QDBusError::ServiceUnknown ||
           error.name() == QLatin1String("org.freedesktop.DBus.Error.NameHasNoOwner");
}

void tell(const QLoggingCategory& (*category)(), const QString& call, const QDBusError& error) {
    if (isOfAbsence(error)) {
        qCInfo(category, "nobody serves %s", qUtf8Printable(call));
    } else {
        qCWarning(category, "%s failed: %s: %s", qUtf8Printable(call), qUtf8Printable(error.name()),
                  qUtf8Printable(error.message()));
    }
}

} // namespace veslora::BusErrors
