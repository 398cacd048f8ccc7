// SPDX-License-Identifier: MIT
// The library of widgets, ready for display: those that are not in the rack, and the size that each would
// come in.
#pragma once

#include "VesloraUI/Support/Presenter.h"
#include "VesloraUI/Support/RowModel.h"
#include "VesloraUI/Widgets/RackModel.h"

#include <QList>
#include <QString>

#include <map>

namespace veslora {

/// A widget that can be added.
struct LibraryRow {
    Q_GADGET
    QML_VALUE_TYPE(libraryRow)
    Q_PROPERTY(QString id MEMBER id FINAL)
    Q_PROPERTY(QString title MEMBER title FINAL)
    Q_PROPERTY(QString blurb MEMBER blurb FINAL)
    /// Its only size in words; empty where there is a choice.
    Q_PROPERTY(QString onlySize MEMBER onlySize FINAL)
    /// The sizes to choose from, in units and in order; none where there is no choice.
    Q_PROPERTY(QList<int> sizes MEMBER sizes FINAL)
    /// The one that it would come in.
    Q_PROPERTY(int size MEMBER size FINAL)

  public:
    QString id; ///< the widget's, as in "claudeUsage"
    QString title;
    QString blurb;
    QString onlySize;
    QList<int> sizes;
    int size = 1;

    bool operator==(const LibraryRow&) const = default;
};

class WidgetLibraryPresenter : public veslora::Presenter {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(veslora::RackModel* rack MEMBER m_rack REQUIRED FINAL)
    Q_PROPERTY(QAbstractItemModel* rows READ rows CONSTANT FINAL)

  public:
    using Presenter::Presenter;

    [[nodiscard]] QAbstractItemModel* rows() { return &m_rows; }

    /// What a size to choose is, as in "2 units wide".
    Q_INVOKABLE [[nodiscard]] static QString sizeHelp(int units);
    /// Keeps the size for when the widget is added. Nothing for an id or a size that is not to be chosen.
    Q_INVOKABLE void choose(const QString& id, int units);
    /// Adds the widget in the size chosen and closes the library. Nothing for an unknown id.
    Q_INVOKABLE void add(const QString& id);

  protected:
    void start() override;
    void read() override;

  private:
    [[nodiscard]] WidgetSize chosenSize(WidgetID id) const;
    [[nodiscard]] LibraryRow rowOf(WidgetID id) const;

    RackModel* m_rack = nullptr;
    std::map<WidgetID, WidgetSize> m_chosenSizes;
    RowModel<LibraryRow> m_rows{"row"};
};

} // namespace veslora
