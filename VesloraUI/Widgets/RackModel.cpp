// SPDX-License-Identifier: MIT
#include "VesloraUI/Widgets/RackModel.h"

#include "VesloraUI/Platform/Observable.h"
#include "VesloraUI/Store/Defaults.h"
#include "VesloraUI/Store/SettingsKeys.h"

#include <algorithm>

namespace veslora {

namespace {

constexpr double spacingStep = 4;
constexpr double emptyWidth = 360; ///< room for what an empty rack says

double widthOf(const std::vector<WidgetEntry>& entries, double spacing) {
    double width = 2 * RackModel::sidePadding;
    for (const WidgetEntry& entry : entries) {
        width += entry.width();
    }
    return entries.empty() ? width : width + spacing * static_cast<double>(entries.size() - 1);
}

} // namespace

RackModel::RackModel(Defaults& settings, HapticPerforming& haptics)
    : m_settings(settings), m_haptics(haptics),
      m_layout(WidgetLayout::fromStoredValue(settings.stringValue(SettingsKeys::widgetLayout))),
      m_customSpacing(readCustomSpacing()), m_reportedIslandWidth(islandWidth()) {
    for (const auto signal :
         {&RackModel::layoutChanged, &RackModel::pageChanged, &RackModel::isEditingChanged,
          &RackModel::isShowingLibraryChanged, &RackModel::spacingChanged, &RackModel::islandWidthChanged,
          &RackModel::widthLimitChanged}) {
        connect(this, signal, this, &RackModel::changed);
    }
}

WidgetLayout RackModel::previewLayout() const {
    WidgetLayout layout = m_layout;
    if (m_draggingID && m_previewIndex) {
        layout.move(*m_draggingID, *m_previewIndex);
    }
    return layout;
}

int RackModel::pageCount() const {
    return static_cast<int>(m_layout.pages(limits()).size());
}

PageLimits RackModel::limits() const {
    return {.width = m_widthLimit - 2 * sidePadding, .gap = RackRoom::leastSpacing};
}

std::vector<ModuleFrame> RackModel::frames() const {
    return RackFrames::frames(shownPage(), {width(), limits().width, m_customSpacing});
}

int RackModel::lastPage(const WidgetLayout& layout) const {
    return std::max(static_cast<int>(layout.pages(limits()).size()) - 1, 0);
}

std::vector<WidgetEntry> RackModel::shownPage() const {
    const auto pages = previewLayout().pages(limits());
    return pages.empty() ? std::vector<WidgetEntry>()
                         : pages[std::min(static_cast<std::size_t>(m_page), pages.size() - 1)];
}

double RackModel::spacingValue() const {
    return SettingsKeys::widgetSpacingRange.clamped(m_settings.doubleValue(SettingsKeys::widgetSpacing));
}

double RackModel::islandWidth() const {
    const auto page = shownPage();
    const double wanted = std::max(widthOf(page, spacing()), leastWidth(page.empty()));
    return std::min(wanted, m_widthLimit);
}

/// A gap of the user's own hugs the page; editing, the library and modules that spread need more room.
double RackModel::leastWidth(bool isPageEmpty) const {
    if (isAutomatic() || m_isEditing || m_isShowingLibrary) {
        return NotchGeometry::minExpandedWidth;
    }
    return isPageEmpty ? emptyWidth : 0;
}

void RackModel::setScreenWidth(double width) {
    assign(this, m_widthLimit, std::min(width, NotchGeometry::maxExpandedWidth),
           &RackModel::widthLimitChanged);
    // Another screen may have fewer pages.
    setPage(m_page);
}

void RackModel::setPage(int page) {
    assign(this, m_page, std::clamp(page, 0, lastPage(m_layout)), &RackModel::pageChanged);
    reportIslandWidth();
}

void RackModel::setShowingLibrary(bool isShowingLibrary) {
    assign(this, m_isShowingLibrary, isShowingLibrary, &RackModel::isShowingLibraryChanged);
    reportIslandWidth();
}

void RackModel::enterEditing() {
    if (!assign(this, m_isEditing, true, &RackModel::isEditingChanged)) {
        return;
    }
    reportIslandWidth();
    m_haptics.perform(HapticPattern::alignment);
    if (onEditingChange) {
        onEditingChange(true);
    }
}

void RackModel::exitEditing() {
    if (!assign(this, m_isEditing, false, &RackModel::isEditingChanged)) {
        return;
    }
    setPreview(std::nullopt, std::nullopt);
    setShowingLibrary(false);
    if (onEditingChange) {
        onEditingChange(false);
    }
}

void RackModel::flipPage(int step) {
    const long long page = static_cast<long long>(m_page) + step;
    const int last = lastPage(previewLayout());
    assign(this, m_page, static_cast<int>(std::clamp(page, 0LL, static_cast<long long>(last))),
           &RackModel::pageChanged);
    reportIslandWidth();
}

void RackModel::setAutomaticSpacing(bool isAutomatic) {
    m_settings.set(SettingsKeys::widgetSpacingAutomatic, isAutomatic);
    settingsChanged();
}

void RackModel::stepSpacing(int steps) {
    const double wanted = spacingValue() + spacingStep * steps;
    m_settings.set(SettingsKeys::widgetSpacing, SettingsKeys::widgetSpacingRange.clamped(wanted));
    m_settings.set(SettingsKeys::widgetSpacingAutomatic, false);
    settingsChanged();
}

void RackModel::didOpen() {
    setPage(m_page);
}

std::optional<double> RackModel::readCustomSpacing() const {
    return m_settings.boolValue(SettingsKeys::widgetSpacingAutomatic) ? std::nullopt
                                                                      : std::optional(spacingValue());
}

void RackModel::settingsChanged() {
    takeStoredLayout();
    assign(this, m_customSpacing, readCustomSpacing(), &RackModel::spacingChanged);
    reportIslandWidth();
}

/// Takes over an arrangement that somebody else has stored.
void RackModel::takeStoredLayout() {
    auto stored = WidgetLayout::fromStoredValue(m_settings.stringValue(SettingsKeys::widgetLayout));
    if (m_layout != stored) {
        m_layout = std::move(stored);
        setPage(m_page);
        emit layoutChanged();
    }
}

/// Keeps the arrangement in the settings first, so that it survives whatever its observers do.
void RackModel::setLayout(WidgetLayout layout) {
    if (m_layout == layout) {
        return;
    }
    m_layout = std::move(layout);
    m_settings.set(SettingsKeys::widgetLayout, m_layout.storedValue());
    setPage(m_page);
    emit layoutChanged();
}

void RackModel::add(WidgetID id, std::optional<WidgetSize> size) {
    WidgetLayout layout = m_layout;
    layout.add(id, size);
    setLayout(std::move(layout));
}

void RackModel::remove(WidgetID id) {
    WidgetLayout layout = m_layout;
    layout.remove(id);
    setLayout(std::move(layout));
}

void RackModel::setSize(WidgetID id, WidgetSize size) {
    WidgetLayout layout = m_layout;
    layout.setSize(id, size);
    setLayout(std::move(layout));
    showPageOf(id);
}

void RackModel::move(WidgetID id, int index) {
    WidgetLayout layout = m_layout;
    layout.move(id, index);
    setLayout(std::move(layout));
    showPageOf(id);
}

std::optional<int> RackModel::placeOnPage(WidgetID id, int page) const {
    const auto ids = m_layout.ids();
    const auto own = static_cast<int>(std::ranges::find(ids, id) - ids.begin());
    const int place = m_layout.clampedIndex(own, id, page, limits());
    WidgetLayout layout = m_layout;
    layout.move(id, place);
    return pageIn(layout, id) == page ? std::optional(place) : std::nullopt;
}

std::optional<int> RackModel::pageOf(WidgetID id) const {
    return pageIn(m_layout, id);
}

std::optional<int> RackModel::pageIn(const WidgetLayout& layout, WidgetID id) const {
    const auto pages = layout.pages(limits());
    const auto found = std::ranges::find_if(pages, [id](const std::vector<WidgetEntry>& page) {
        return std::ranges::find(page, id, &WidgetEntry::id) != page.end();
    });
    return found == pages.end() ? std::nullopt : std::optional(static_cast<int>(found - pages.begin()));
}

void RackModel::showPageOf(WidgetID id) {
    if (const auto page = pageOf(id)) {
        setPage(*page);
    }
}

void RackModel::setPreview(std::optional<WidgetID> draggingID, std::optional<int> previewIndex) {
    if (m_draggingID != draggingID || m_previewIndex != previewIndex) {
        m_draggingID = draggingID;
        m_previewIndex = previewIndex;
        emit layoutChanged();
    }
    reportIslandWidth();
}

void RackModel::beginDrag(WidgetID id) {
    setPreview(id, std::nullopt);
}

void RackModel::drag(WidgetID id, int toIndex) {
    if (m_draggingID != id) {
        beginDrag(id);
    }
    const auto ids = m_layout.ids();
    const auto others = std::ranges::count_if(ids, [id](WidgetID other) { return other != id; });
    const int limited = std::clamp(toIndex, 0, static_cast<int>(others));
    setPreview(id, m_layout.clampedIndex(limited, id, m_page, limits()));
}

void RackModel::endDrag() {
    WidgetLayout layout = previewLayout();
    const bool wasDragging = m_draggingID.has_value();
    // Ended before the move, or the preview would move the widget once more.
    m_draggingID.reset();
    m_previewIndex.reset();
    setLayout(std::move(layout));
    if (wasDragging) {
        emit layoutChanged();
    }
    reportIslandWidth();
}

void RackModel::reportIslandWidth() {
    const double width = islandWidth();
    if (assign(this, m_reportedIslandWidth, width, &RackModel::islandWidthChanged) && onIslandWidthChange) {
        onIslandWidthChange(width);
    }
}

} // namespace veslora
