// SPDX-License-Identifier: MIT
// What the usage widget shows of one agent or one limit, ready for display.
#pragma once

#include "VesloraUI/Claude/Views/AgentGlyph.h"

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace veslora {

/// One meter with what is shown beside and below it.
struct UsageReading {
    Q_GADGET
    QML_VALUE_TYPE(usageReading)
    Q_PROPERTY(QString id MEMBER id FINAL)
    Q_PROPERTY(QString label MEMBER label FINAL)
    Q_PROPERTY(double fraction MEMBER fraction FINAL)
    Q_PROPERTY(QString percent MEMBER percent FINAL)
    Q_PROPERTY(QString detail MEMBER detail FINAL)
    Q_PROPERTY(bool isStale MEMBER isStale FINAL)

  public:
    QString id;
    QString label;
    double fraction = 0; ///< 0 to 1
    QString percent;
    QString detail;       ///< possibly empty
    bool isStale = false; ///< old, and therefore faded

    bool operator==(const UsageReading&) const = default;
};

/// Both limits of an agent in one line.
struct UsageAgentLine {
    Q_GADGET
    QML_VALUE_TYPE(usageAgentLine)
    Q_PROPERTY(QString id MEMBER id FINAL)
    Q_PROPERTY(veslora::AgentGlyph glyph MEMBER glyph FINAL)
    Q_PROPERTY(veslora::UsageReading fiveHour MEMBER fiveHour FINAL)
    Q_PROPERTY(veslora::UsageReading week MEMBER week FINAL)
    Q_PROPERTY(bool isStale MEMBER isStale FINAL)

  public:
    QString id;
    AgentGlyph glyph;
    UsageReading fiveHour;
    UsageReading week;
    bool isStale = false; ///< old, and therefore faded

    bool operator==(const UsageAgentLine&) const = default;
};

} // namespace veslora
