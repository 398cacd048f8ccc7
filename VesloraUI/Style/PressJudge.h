// SPDX-License-Identifier: MIT
// Decides whether a press on a key counts. Main thread only.
#pragma once

#include <QObject>
#include <QQmlEngine>

#include <cstdint>

namespace veslora {

/// Times are those of the pointer's events: milliseconds of 32 bits, which wrap.
class PressJudge : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by an alert")
    /// Whether a press would count as of now, for the look of the keys.
    Q_PROPERTY(bool isArmed READ isArmed NOTIFY isArmedChanged FINAL)

  public:
    using QObject::QObject;

    [[nodiscard]] virtual bool isArmed() const = 0;

    /// A button went down on a key.
    virtual void press(std::uint32_t eventTime) = 0;
    /// It came up, or the key lost it. Whether the two together count as a press.
    [[nodiscard]] virtual bool release(std::uint32_t eventTime) = 0;
    /// Whether an action that came without a pointer and without a time counts.
    [[nodiscard]] virtual bool act() = 0;

  signals:
    void isArmedChanged();
};

} // namespace veslora
