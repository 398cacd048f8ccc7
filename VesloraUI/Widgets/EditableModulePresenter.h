// SPDX-License-Identifier: MIT
// What the keys on a module say and do while it is edited.
#pragma once

#include "VesloraUI/Support/Presenter.h"
#include "VesloraUI/Widgets/RackModel.h"
#include "VesloraUI/Widgets/WidgetTitle.h"

#include <QString>

namespace veslora {

class EditableModulePresenter : public veslora::Presenter {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(veslora::RackModel* rack MEMBER m_rack REQUIRED FINAL)
    /// The widget's id, as in "claudeUsage".
    Q_PROPERTY(QString widget READ widget WRITE setWidget REQUIRED FINAL)
    Q_PROPERTY(bool hasSizes READ hasSizes NOTIFY changed FINAL)
    Q_PROPERTY(QString sizeText READ sizeText NOTIFY changed FINAL)
    Q_PROPERTY(QString sizeName READ sizeName NOTIFY changed FINAL)
    Q_PROPERTY(QString sizeHelp READ sizeHelp NOTIFY changed FINAL)
    Q_PROPERTY(QString removeName READ removeName NOTIFY changed FINAL)

  public:
    using Presenter::Presenter;

    [[nodiscard]] QString widget() const { return QString::fromUtf8(rawValue(m_id)); }
    /// One that names no widget changes nothing.
    void setWidget(const QString& widget);

    /// It comes in more than one size.
    [[nodiscard]] bool hasSizes() const { return sizes(m_id).size() > 1; }
    [[nodiscard]] QString sizeText() const; ///< as in "2U"
    [[nodiscard]] QString sizeName() const; ///< as in "Timer size 2 units"
    [[nodiscard]] QString sizeHelp() const; ///< as in "Switch to 1 unit"
    [[nodiscard]] QString removeName() const;

    Q_INVOKABLE void switchSize();
    Q_INVOKABLE void remove();

  protected:
    void start() override;
    void read() override;

  private:
    [[nodiscard]] WidgetSize next() const;
    [[nodiscard]] QString title() const { return shownTitle(m_id); }

    RackModel* m_rack = nullptr;
    WidgetID m_id = WidgetID::clock;
    WidgetSize m_size = WidgetSize::small;
};

} // namespace veslora
