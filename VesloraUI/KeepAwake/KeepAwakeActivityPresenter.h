// SPDX-License-Identifier: MIT
// What the closed island tells of a keep-awake session. What was shown last stays when the session ends, so
// that an island that fades out does not change.
#pragma once

#include "VesloraUI/KeepAwake/KeepAwakeModel.h"
#include "VesloraUI/Support/Presenter.h"

#include <QString>

namespace veslora {

class KeepAwakeActivityPresenter : public veslora::Presenter {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(veslora::KeepAwakeModel* keepAwake MEMBER m_keepAwake REQUIRED FINAL)
    /// Seconds since 1970, from the view's timeline: everything is read again with each.
    Q_PROPERTY(double date MEMBER m_date WRITE setDate REQUIRED FINAL)
    /// The time left; empty for a session without an end.
    Q_PROPERTY(QString text READ text NOTIFY changed FINAL)

  public:
    using Presenter::Presenter;

    void setDate(double date);

    [[nodiscard]] QString text() const { return m_text; }

  protected:
    void start() override;
    void read() override;

  private:
    KeepAwakeModel* m_keepAwake = nullptr;
    double m_date = 0;
    QString m_text;
};

} // namespace veslora
