// SPDX-License-Identifier: MIT
// Where each widget of the rack is, ready for display. Every widget has one row for as long as the rack is
// shown, whether it is on the page or not: so none is made again when the page turns, and one that leaves can
// fade where it was.
#pragma once

#include "VesloraUI/Support/Presenter.h"
#include "VesloraUI/Support/RowModel.h"
#include "VesloraUI/Widgets/RackModel.h"

#include <QString>

namespace veslora {

/// One widget's place in the rack.
struct RackEntry {
    Q_GADGET
    QML_VALUE_TYPE(rackEntry)
    Q_PROPERTY(QString id MEMBER id FINAL)
    Q_PROPERTY(QString title MEMBER title FINAL)
    Q_PROPERTY(double offset MEMBER offset FINAL)
    Q_PROPERTY(double width MEMBER width FINAL)
    Q_PROPERTY(bool isWide MEMBER isWide FINAL)
    Q_PROPERTY(bool isShown MEMBER isShown FINAL)
    Q_PROPERTY(bool isDragged MEMBER isDragged FINAL)

  public:
    QString id; ///< the widget's, by which the view is picked, as in "claudeUsage"
    QString title;
    double offset = 0; ///< points from the middle of the rack to its left edge; the last one where it is gone
    double width = 0;  ///< points
    bool isWide = false;
    bool isShown = false; ///< on the page that shows
    bool isDragged = false;

    bool operator==(const RackEntry&) const = default;
};

class RackPresenter : public veslora::Presenter {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(veslora::RackModel* rack MEMBER m_rack REQUIRED FINAL)
    Q_PROPERTY(QAbstractItemModel* modules READ modules CONSTANT FINAL)
    Q_PROPERTY(bool isEmpty READ isEmpty NOTIFY changed FINAL)

  public:
    using Presenter::Presenter;

    [[nodiscard]] QAbstractItemModel* modules() { return &m_modules; }
    /// There is no widget at all, and nobody is about to add one.
    [[nodiscard]] bool isEmpty() const { return m_isEmpty; }

  protected:
    void start() override;
    void read() override;

  private:
    [[nodiscard]] std::vector<RackEntry> absentees() const;

    RackModel* m_rack = nullptr;
    bool m_isEmpty = false;
    RowModel<RackEntry> m_modules{"entry"};
};

} // namespace veslora
