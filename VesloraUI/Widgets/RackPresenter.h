// SPDX-License-Identifier: MIT
// The page of the rack that shows, ready for display.
#pragma once

#include "VesloraUI/Support/Presenter.h"
#include "VesloraUI/Support/RowModel.h"
#include "VesloraUI/Widgets/RackModel.h"

#include <QString>

namespace veslora {

/// One place of the rack.
struct RackEntry {
    Q_GADGET
    QML_VALUE_TYPE(rackEntry)
    Q_PROPERTY(QString id MEMBER id FINAL)
    Q_PROPERTY(QString title MEMBER title FINAL)
    Q_PROPERTY(double width MEMBER width FINAL)
    Q_PROPERTY(bool isWide MEMBER isWide FINAL)

  public:
    QString id; ///< the widget's, by which the view is picked, as in "claudeUsage"
    QString title;
    double width = 0; ///< points
    bool isWide = false;

    bool operator==(const RackEntry&) const = default;
};

class RackPresenter : public veslora::Presenter {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(veslora::RackModel* rack MEMBER m_rack REQUIRED FINAL)
    /// Points that the modules may spread over.
    Q_PROPERTY(double availableWidth MEMBER m_availableWidth WRITE setAvailableWidth REQUIRED FINAL)
    Q_PROPERTY(QAbstractItemModel* modules READ modules CONSTANT FINAL)
    Q_PROPERTY(double spacing READ spacing NOTIFY changed FINAL)
    Q_PROPERTY(bool isEmpty READ isEmpty NOTIFY changed FINAL)

  public:
    using Presenter::Presenter;

    void setAvailableWidth(double width);

    [[nodiscard]] QAbstractItemModel* modules() { return &m_modules; }
    /// Points between two modules: the user's own, or what spreads them over the width, but at least 20.
    /// Less, down to 8, where the screen is too narrow for that.
    [[nodiscard]] double spacing() const;
    /// There is no widget at all, and nobody is about to add one.
    [[nodiscard]] bool isEmpty() const;

  protected:
    void start() override;
    void read() override;

  private:
    RackModel* m_rack = nullptr;
    double m_availableWidth = 0;
    RowModel<RackEntry> m_modules{"entry"};
};

} // namespace veslora
