// SPDX-License-Identifier: MIT
// What the settings to which views bind have in common: each follows one key of the store.
#pragma once

#include <QObject>
#include <QQmlEngine>
#include <QString>

#include <string>

namespace veslora {

class Defaults;

class SettingBinding : public QObject, public QQmlParserStatus {
    Q_OBJECT
    QML_ANONYMOUS
    Q_INTERFACES(QQmlParserStatus)
    Q_PROPERTY(QString key MEMBER m_key REQUIRED FINAL)

  public:
    using QObject::QObject;

    void classBegin() final {}
    void componentComplete() final;

  signals:
    void valueChanged();

  protected:
    /// Takes in what the store holds now.
    virtual void read() = 0;
    /// Null before the view has given the key.
    [[nodiscard]] Defaults* settings() const { return m_settings; }
    [[nodiscard]] std::string key() const { return m_key.toStdString(); }

  private:
    QString m_key;
    Defaults* m_settings = nullptr;
};

} // namespace veslora
