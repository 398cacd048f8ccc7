// SPDX-License-Identifier: MIT
#include "VesloraUI/Widgets/EditableModulePresenter.h"

#include <algorithm>

namespace veslora {

void EditableModulePresenter::setWidget(const QString& widget) {
    if (const auto id = widgetIDFrom(widget.toStdString())) {
        m_id = *id;
        refresh();
    }
}

void EditableModulePresenter::start() {
    follow(m_rack, &RackModel::layoutChanged);
}

void EditableModulePresenter::read() {
    const auto& entries = m_rack->layout().entries;
    const auto own = std::ranges::find(entries, m_id, &WidgetEntry::id);
    m_size = own == entries.end() ? defaultSize(m_id) : own->size;
    emit changed();
}

QString EditableModulePresenter::sizeText() const {
    return tr("%1U").arg(units(m_size));
}

QString EditableModulePresenter::sizeName() const {
    return tr("%1 size %Ln unit(s)", nullptr, units(m_size)).arg(title());
}

QString EditableModulePresenter::sizeHelp() const {
    return tr("Switch to %Ln unit(s)", nullptr, units(next()));
}

QString EditableModulePresenter::removeName() const {
    return tr("Remove %1").arg(title());
}

/// The one after the present size, or the first after the last.
WidgetSize EditableModulePresenter::next() const {
    const auto all = sizes(m_id);
    const auto current = std::ranges::find(all, m_size);
    return current == all.end() || current + 1 == all.end() ? all.front() : *(current + 1);
}

void EditableModulePresenter::switchSize() {
    m_rack->setSize(m_id, next());
}

void EditableModulePresenter::remove() {
    m_rack->remove(m_id);
}

} // namespace veslora
