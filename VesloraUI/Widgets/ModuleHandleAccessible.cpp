// SPDX-License-Identifier: MIT
#include "VesloraUI/Widgets/ModuleHandleAccessible.h"

#include "VesloraUI/Widgets/ModuleHandle.h"

#include <algorithm>

namespace veslora {

namespace {

std::optional<ModuleActions::Action> actionNamed(const QString& name) {
    const auto found = std::ranges::find(ModuleActions::all, name, ModuleActions::name);
    return found == ModuleActions::all.end() ? std::nullopt : std::optional(*found);
}

} // namespace

ModuleHandleAccessible::ModuleHandleAccessible(ModuleHandle& handle) : ItemAccessible(handle) {}

ModuleHandle& ModuleHandleAccessible::handle() const {
    return static_cast<ModuleHandle&>(item());
}

QString ModuleHandleAccessible::text(QAccessible::Text kind) const {
    switch (kind) {
    case QAccessible::Name:
        return handle().name();
    case QAccessible::Description:
        return handle().place();
    default:
        return {};
    }
}

QStringList ModuleHandleAccessible::actionNames() const {
    QStringList names;
    const auto id = handle().id();
    for (const auto action : ModuleActions::all) {
        if (id && handle().isEnabled() && ModuleActions::isAvailable(action, handle().rack(), *id)) {
            names << ModuleActions::name(action);
        }
    }
    return names;
}

QString ModuleHandleAccessible::localizedActionName(const QString& name) const {
    const auto action = actionNamed(name);
    return action ? ModuleActions::localizedName(*action) : name;
}

void ModuleHandleAccessible::doAction(const QString& actionName) {
    const auto action = actionNamed(actionName);
    const auto id = handle().id();
    if (action && id && handle().isEnabled()) {
        ModuleActions::perform(*action, handle().rack(), *id);
    }
}

} // namespace veslora
