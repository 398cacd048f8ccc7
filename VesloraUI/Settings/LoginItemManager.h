// SPDX-License-Identifier: MIT
// Whether the program starts when the user logs in, and why it could not be told to. Main thread only.
#pragma once

#include <QObject>
#include <QQmlEngine>
#include <QString>

namespace veslora {

class LoginItem;

class LoginItemManager : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    Q_DISABLE_COPY_MOVE(LoginItemManager)
    Q_PROPERTY(bool isEnabled READ isEnabled NOTIFY isEnabledChanged FINAL)
    /// Of the last change; empty while there is nothing to say.
    Q_PROPERTY(QString errorMessage READ errorMessage NOTIFY errorMessageChanged FINAL)

  public:
    explicit LoginItemManager(LoginItem& item);
    ~LoginItemManager() override = default;

    [[nodiscard]] bool isEnabled() const { return m_isEnabled; }
    [[nodiscard]] const QString& errorMessage() const { return m_errorMessage; }

    /// Afterwards `isEnabled` says what is, whether that was done or not.
    Q_INVOKABLE void setEnabled(bool isOn);
    /// Looks again, since the desktop's own tools change it too.
    Q_INVOKABLE void refresh();

  signals:
    void isEnabledChanged();
    void errorMessageChanged();

  private:
    LoginItem& m_item;
    bool m_isEnabled;
    QString m_errorMessage;
};

} // namespace veslora
