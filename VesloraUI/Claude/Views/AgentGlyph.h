// SPDX-License-Identifier: MIT
// What stands for an agent wherever views show one, ready for display.
#pragma once

#include "VesloraCore/Agents/AgentTraits.h"

#include <QColor>
#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace veslora {

struct AgentGlyph {
    Q_GADGET
    QML_VALUE_TYPE(agentGlyph)
    Q_PROPERTY(QString text MEMBER text FINAL)
    Q_PROPERTY(QString name MEMBER name FINAL)
    Q_PROPERTY(QString fullName MEMBER fullName FINAL)
    Q_PROPERTY(QColor color MEMBER color FINAL)
    Q_PROPERTY(bool isSymbol MEMBER isSymbol FINAL)
    Q_PROPERTY(bool isMascot MEMBER isMascot FINAL)

  public:
    QString text;     ///< empty where none is shown
    QString name;     ///< the agent's, for those who can't see the glyph
    QString fullName; ///< the same as its makers call it
    QColor color;
    bool isSymbol = false; ///< a glyph of the symbol font
    bool isMascot = false; ///< beside the notch the mascot takes its place

    bool operator==(const AgentGlyph&) const = default;

    [[nodiscard]] static AgentGlyph of(const AgentTraits& traits);
};

} // namespace veslora
