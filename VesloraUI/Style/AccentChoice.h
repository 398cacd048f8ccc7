// SPDX-License-Identifier: MIT
// The accents to choose from, ready for display.
#pragma once

#include <QColor>
#include <QObject>
#include <QQmlEngine>
#include <QString>
#include <QVariantList>

#include <optional>
#include <string>

namespace veslora {

struct AccentChoice {
    Q_GADGET
    QML_VALUE_TYPE(accentChoice)
    /// The name of its key.
    Q_PROPERTY(QString label MEMBER label FINAL)
    Q_PROPERTY(QString helpText MEMBER helpText FINAL)
    Q_PROPERTY(QColor color MEMBER color FINAL)

  public:
    QString label;
    QString helpText;
    QColor color;

    /// Every accent, in its order.
    [[nodiscard]] static QVariantList all();
    /// The place among them of the one that is stored so; a text that names none stands for the first.
    [[nodiscard]] static int placeOf(const std::optional<std::string>& stored);
    /// How the one at that place is stored; absent for any other place.
    [[nodiscard]] static std::optional<std::string> storedAt(int place);
};

} // namespace veslora
