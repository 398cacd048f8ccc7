// SPDX-License-Identifier: MIT
#include "VesloraUI/Widgets/ModuleHandle.h"

#include "VesloraUI/Widgets/ModuleHandleAccessible.h"
#include "VesloraUI/Widgets/WidgetTitle.h"

#include <algorithm>

namespace veslora {

ModuleHandle::ModuleHandle(QQuickItem* parent) : QQuickItem(parent) {
    ItemAccessible::install<ModuleHandleAccessible, ModuleHandle>();
    setAcceptHoverEvents(true);
}

std::optional<WidgetID> ModuleHandle::id() const {
    return widgetIDFrom(m_widget.toStdString());
}

QString ModuleHandle::name() const {
    const auto own = id();
    return own ? shownTitle(*own) : QString();
}

QString ModuleHandle::place() const {
    const auto own = id();
    const auto page = own ? m_rack->pageOf(*own) : std::nullopt;
    if (!page) {
        return {};
    }
    const auto entries = m_rack->layout().pages(m_rack->limits())[static_cast<std::size_t>(*page)];
    const auto index = std::ranges::find(entries, *own, &WidgetEntry::id) - entries.begin();
    return tr("Place %1 of %2 on page %3 of %4")
        .arg(QString::number(index + 1), QString::number(entries.size()), QString::number(*page + 1),
             QString::number(m_rack->pageCount()));
}

} // namespace veslora
