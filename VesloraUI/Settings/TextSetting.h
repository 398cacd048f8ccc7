// SPDX-License-Identifier: MIT
// One text of the settings as a view binds to it: it follows the store, and writing it writes the store.
#pragma once

#include <QObject>
#include <QQmlEngine>
#include <QString>

namespace veslora {

class Defaults;

class TextSetting : public QObject, public QQmlParserStatus {
    Q_OBJECT
    QML_ELEMENT
    Q_INTERFACES(QQmlParserStatus)
    Q_PROPERTY(QString key MEMBER m_key REQUIRED FINAL)
    Q_PROPERTY(QString value READ value WRITE setValue NOTIFY valueChanged FINAL)

  public:
    using QObject::QObject;

    void classBegin() override {}
    void componentComplete() override;

    [[nodiscard]] QString value() const { return m_value; }
    void setValue(const QString& value);

  signals:
    void valueChanged();

  private:
    void read();

    QString m_key;
    Defaults* m_settings = nullptr;
    QString m_value;
};

} // namespace veslora
