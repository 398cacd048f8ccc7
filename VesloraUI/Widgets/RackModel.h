// SPDX-License-Identifier: MIT
// What the open island holds: the live arrangement of widgets, the page on show, edit mode, a drag under way
// and the spacing; and from all that how wide the island should be. Main thread only.
#pragma once

#include "VesloraCore/Island/NotchGeometry.h"
#include "VesloraCore/Widgets/RackFrames.h"
#include "VesloraCore/Widgets/WidgetLayout.h"
#include "VesloraUI/Platform/HapticPerforming.h"

#include <QObject>
#include <QQmlEngine>

#include <functional>
#include <optional>

namespace veslora {

class Defaults;

class RackModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    Q_PROPERTY(int page READ page WRITE setPage NOTIFY pageChanged FINAL)
    Q_PROPERTY(int pageCount READ pageCount NOTIFY changed FINAL)
    Q_PROPERTY(bool isEditing READ isEditing NOTIFY isEditingChanged FINAL)
    Q_PROPERTY(bool isShowingLibrary READ isShowingLibrary WRITE setShowingLibrary NOTIFY
                   isShowingLibraryChanged FINAL)
    Q_PROPERTY(bool isAutomatic READ isAutomatic WRITE setAutomaticSpacing NOTIFY spacingChanged FINAL)
    Q_PROPERTY(double spacing READ spacing NOTIFY spacingChanged FINAL)
    Q_PROPERTY(double spacingValue READ spacingValue NOTIFY spacingChanged FINAL)
    Q_PROPERTY(double islandWidth READ islandWidth NOTIFY islandWidthChanged FINAL)

  public:
    static constexpr double sidePadding = 32; ///< points on each side of the rack

    RackModel(Defaults& settings, HapticPerforming& haptics);

    /// The arrangement as it is kept.
    [[nodiscard]] const WidgetLayout& layout() const { return m_layout; }
    /// The arrangement as the user should see it: with the widget under the pointer where it would land.
    [[nodiscard]] WidgetLayout previewLayout() const;
    /// Number of the page on show, from 0. It can lie past the last page of `previewLayout` for a moment.
    [[nodiscard]] int page() const { return m_page; }
    /// How many pages the kept arrangement has on this screen; none when the rack is empty.
    [[nodiscard]] int pageCount() const;
    /// What one page can hold on this screen. What has no room on a narrow one is on further pages; what is
    /// kept stays as it is.
    [[nodiscard]] PageLimits limits() const;
    /// The page on show as the user should see it: of `previewLayout`, or its last one where it has fewer.
    [[nodiscard]] std::vector<WidgetEntry> shownPage() const;
    /// Where the modules of that page are, in points from the rack's left edge.
    [[nodiscard]] std::vector<ModuleFrame> frames() const;
    /// Points that the rack itself is wide.
    [[nodiscard]] double width() const { return islandWidth() - 2 * sidePadding; }
    [[nodiscard]] bool isEditing() const { return m_isEditing; }
    /// The library is open in place of the rack.
    [[nodiscard]] bool isShowingLibrary() const { return m_isShowingLibrary; }
    [[nodiscard]] std::optional<WidgetID> draggingID() const { return m_draggingID; }
    /// Where the dragged widget would land.
    [[nodiscard]] std::optional<int> previewIndex() const { return m_previewIndex; }

    /// The gap between modules that the user set, in points; absent when it is automatic.
    [[nodiscard]] std::optional<double> customSpacing() const { return m_customSpacing; }
    [[nodiscard]] bool isAutomatic() const { return !m_customSpacing; }
    [[nodiscard]] double spacing() const { return m_customSpacing.value_or(RackRoom::automaticSpacing); }
    /// The gap that the user last set, also while it is automatic.
    [[nodiscard]] double spacingValue() const;
    /// Points that the island should be wide now, while open; never more than `widthLimit`.
    [[nodiscard]] double islandWidth() const;
    /// The widest that the island can be: as wide as its screen, and no wider than the panel is planned for.
    [[nodiscard]] double widthLimit() const { return m_widthLimit; }
    /// To be called when the island comes to a screen of that width, or its screen changes.
    void setScreenWidth(double width);

    /// Shows that page, or the nearest there is.
    void setPage(int page);
    void setShowingLibrary(bool isShowingLibrary);

    Q_INVOKABLE void enterEditing();
    /// Drops a drag without moving anything, and closes the library.
    Q_INVOKABLE void exitEditing();
    /// Moves the page by `step`, stopping at either end.
    Q_INVOKABLE void flipPage(int step);
    void setAutomaticSpacing(bool isAutomatic);
    /// Moves the gap by `steps` of 4 points, and ends automatic spacing even at the end of the range.
    Q_INVOKABLE void stepSpacing(int steps);

    /// To be called when the island opens.
    void didOpen();
    /// To be called when any setting may have changed.
    void settingsChanged();

    void add(WidgetID id, std::optional<WidgetSize> size = std::nullopt);
    void remove(WidgetID id);
    /// Follows the widget to the page on which it then is.
    void setSize(WidgetID id, WidgetSize size);
    /// To that place among all widgets, held to the list; follows it likewise.
    void move(WidgetID id, int index);
    /// The place among all widgets at which it would be on that page, the nearest to its own; absent where it
    /// can't land there.
    [[nodiscard]] std::optional<int> placeOnPage(WidgetID id, int page) const;
    /// Number of the page on which the widget is, from 0; absent for one that is not in the rack.
    [[nodiscard]] std::optional<int> pageOf(WidgetID id) const;

    void beginDrag(WidgetID id);
    /// Shows `id` at `toIndex` among all widgets, or at the nearest place that is on this page. Begins the
    /// drag if need be.
    void drag(WidgetID id, int toIndex);
    /// Moves the widget to where it showed, if it showed anywhere.
    void endDrag();

    std::function<void(bool isEditing)> onEditingChange;
    std::function<void(double width)> onIslandWidthChange;

  signals:
    void layoutChanged(); ///< as kept or as shown
    void pageChanged();
    void isEditingChanged();
    void isShowingLibraryChanged();
    void spacingChanged();
    void islandWidthChanged();
    void widthLimitChanged();
    /// Any of the above.
    void changed();

  private:
    void takeStoredLayout();
    void setLayout(WidgetLayout layout);
    [[nodiscard]] std::optional<int> pageIn(const WidgetLayout& layout, WidgetID id) const;
    void showPageOf(WidgetID id);
    void setPreview(std::optional<WidgetID> draggingID, std::optional<int> previewIndex);
    [[nodiscard]] std::optional<double> readCustomSpacing() const;
    [[nodiscard]] double leastWidth(bool isPageEmpty) const;
    [[nodiscard]] int lastPage(const WidgetLayout& layout) const;
    void reportIslandWidth();

    Defaults& m_settings;
    HapticPerforming& m_haptics;
    WidgetLayout m_layout;
    int m_page = 0;
    bool m_isEditing = false;
    bool m_isShowingLibrary = false;
    std::optional<double> m_customSpacing;
    std::optional<WidgetID> m_draggingID;
    std::optional<int> m_previewIndex;
    double m_widthLimit = NotchGeometry::maxExpandedWidth;
    double m_reportedIslandWidth = 0;
};

} // namespace veslora
