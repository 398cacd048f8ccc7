// SPDX-License-Identifier: MIT
// Where and in which language a test's dates are read.
#pragma once

#include <QByteArray>
#include <QLocale>

#include <ctime>

namespace veslora {

/// Dates as in London's language and Berlin's winter, whatever the machine is set to.
class FixedPlace {
  public:
    FixedPlace() {
        QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedKingdom));
        setZone("VST-1");
    }
    ~FixedPlace() {
        QLocale::setDefault(QLocale::system());
        m_hadZone ? setZone(m_zone) : unsetZone();
    }
    Q_DISABLE_COPY_MOVE(FixedPlace)

  private:
    static void setZone(const QByteArray& zone) {
        qputenv("TZ", zone);
        tzset();
    }
    static void unsetZone() {
        qunsetenv("TZ");
        tzset();
    }
    bool m_hadZone = qEnvironmentVariableIsSet("TZ");
    QByteArray m_zone = qgetenv("TZ");
};

} // namespace veslora
