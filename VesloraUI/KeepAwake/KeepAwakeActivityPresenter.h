// SPDX-License-Identifier: MIT
// What the closed island tells of a keep-awake session. What was shown last stays when the session ends, so
// that an island on its way out does not change its face.
#pragma once

#include "VesloraUI/KeepAwake/KeepAwakeModel.h"

#include <QObject>
#include <QQmlEngine>
#include <QString>

namespace veslora {

class KeepAwakeActivityPresenter : public QObject, public QQmlParserStatus {
    Q_OBJECT
    QML_ELEMENT
    Q_INTERFACES(QQmlParserStatus)
    Q_PROPERTY(veslora::KeepAwakeModel* keepAwake MEMBER m_keepAwake REQUIRED FINAL)
    /// Seconds since 1970, from the view's timeline: everything is read anew with each.
    Q_PROPERTY(double date MEMBER m_date WRITE setDate REQUIRED FINAL)
    /// The time left; empty for a session without an end.
    Q_PROPERTY(QString text READ text NOTIFY textChanged FINAL)

  public:
    using QObject::QObject;

    void classBegin() override {}
    void componentComplete() override;

    void setDate(double date);

    [[nodiscard]] QString text() const { return m_text; }

  signals:
    void textChanged();

  private:
    void read();

    KeepAwakeModel* m_keepAwake = nullptr;
    double m_date = 0;
    bool m_isComplete = false;
    QString m_text;
};

} // namespace veslora
