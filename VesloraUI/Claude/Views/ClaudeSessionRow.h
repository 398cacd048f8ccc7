// SPDX-License-Identifier: MIT
// One session as a row of the agents widget shows it, ready for display.
#pragma once

#include <QColor>
#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace veslora {

struct ClaudeSessionRow {
    Q_GADGET
    QML_VALUE_TYPE(claudeSessionRow)
    Q_PROPERTY(QString id MEMBER id FINAL)
    Q_PROPERTY(QString name MEMBER name FINAL)
    Q_PROPERTY(QString helpText MEMBER helpText FINAL)
    Q_PROPERTY(QString mark MEMBER mark FINAL)
    Q_PROPERTY(bool markIsSymbol MEMBER markIsSymbol FINAL)
    Q_PROPERTY(QColor markColor MEMBER markColor FINAL)
    Q_PROPERTY(QColor lightColor MEMBER lightColor FINAL)
    Q_PROPERTY(QString label MEMBER label FINAL)
    Q_PROPERTY(QColor labelColor MEMBER labelColor FINAL)
    Q_PROPERTY(QString activity MEMBER activity FINAL)

  public:
    QString id;
    QString name;
    QString helpText;
    QString mark;              ///< empty where marks are not shown
    bool markIsSymbol = false; ///< the mark is a glyph of the symbol font
    QColor markColor;
    QColor lightColor;
    QString label;
    QColor labelColor;
    QString activity; ///< empty where no second line is shown

    bool operator==(const ClaudeSessionRow&) const = default;
};

} // namespace veslora
