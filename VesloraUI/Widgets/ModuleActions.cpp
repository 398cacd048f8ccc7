// SPDX-License-Identifier: MIT
#include "VesloraUI/Widgets/ModuleActions.h"

#include <QCoreApplication>

#include <algorithm>

namespace veslora::ModuleActions {

namespace {

const char* text(Action action) {
    switch (action) {
    case Action::moveLeft:
        return QT_TRANSLATE_NOOP("ModuleActions", "move left");
    case Action::moveRight:
        return QT_TRANSLATE_NOOP("ModuleActions", "move right");
    case Action::toPreviousPage:
        return QT_TRANSLATE_NOOP("ModuleActions", "to previous page");
    case Action::toNextPage:
        return QT_TRANSLATE_NOOP("ModuleActions", "to next page");
    case Action::makeSmall:
        return QT_TRANSLATE_NOOP("ModuleActions", "make small");
    case Action::makeWide:
        return QT_TRANSLATE_NOOP("ModuleActions", "make wide");
    case Action::remove:
        return QT_TRANSLATE_NOOP("ModuleActions", "remove");
    }
    return "";
}

int indexOf(const WidgetLayout& layout, WidgetID id) {
    return static_cast<int>(std::ranges::find(layout.entries, id, &WidgetEntry::id) - layout.entries.begin());
}

/// Only one that is available.
void act(Action action, RackModel& rack, WidgetID id) {
    const int index = indexOf(rack.layout(), id);
    const auto beside = [&](int step) { return *rack.placeOnPage(id, *rack.pageOf(id) + step); };
    switch (action) {
    case Action::moveLeft:
        return rack.move(id, index - 1);
    case Action::moveRight:
        return rack.move(id, index + 1);
    case Action::toPreviousPage:
        return rack.move(id, beside(-1));
    case Action::toNextPage:
        return rack.move(id, beside(1));
    case Action::makeSmall:
        return rack.setSize(id, WidgetSize::small);
    case Action::makeWide:
        return rack.setSize(id, WidgetSize::wide);
    case Action::remove:
        return rack.remove(id);
    }
}

bool comesIn(WidgetID id, WidgetSize size) {
    return std::ranges::find(sizes(id), size) != sizes(id).end();
}

bool isOfSize(const WidgetLayout& layout, WidgetID id, WidgetSize size) {
    return std::ranges::find(layout.entries, WidgetEntry{id, size}) != layout.entries.end();
}

} // namespace

QString name(Action action) {
    return QString::fromUtf8(text(action));
}

QString localizedName(Action action) {
    return QCoreApplication::translate("ModuleActions", text(action));
}

bool isAvailable(Action action, const RackModel& rack, WidgetID id) {
    const WidgetLayout& layout = rack.layout();
    const auto page = rack.pageOf(id);
    if (!page) {
        return false;
    }
    switch (action) {
    case Action::moveLeft:
        return layout.entries.front().id != id;
    case Action::moveRight:
        return layout.entries.back().id != id;
    case Action::toPreviousPage:
        return rack.placeOnPage(id, *page - 1).has_value();
    case Action::toNextPage:
        return rack.placeOnPage(id, *page + 1).has_value();
    case Action::makeSmall:
        return comesIn(id, WidgetSize::small) && !isOfSize(layout, id, WidgetSize::small);
    case Action::makeWide:
        return comesIn(id, WidgetSize::wide) && !isOfSize(layout, id, WidgetSize::wide);
    case Action::remove:
        return true;
    }
    return false;
}

void perform(Action action, RackModel& rack, WidgetID id) {
    if (isAvailable(action, rack, id)) {
        act(action, rack, id);
    }
}

} // namespace veslora::ModuleActions
