// SPDX-License-Identifier: MIT
#include "VesloraUI/Style/AccentChoice.h"

#include "VesloraUI/Style/Accent.h"

#include <QCoreApplication>

#include <algorithm>

namespace veslora {

using AccentColors::allCases;

QVariantList AccentChoice::all() {
    QVariantList choices;
    for (const Accent accent : allCases) {
        const QString shownName =
            QCoreApplication::translate("Accents", AccentColors::displayName(accent).data());
        const QString label = QCoreApplication::translate("Accents", "%1 accent").arg(shownName);
        choices << QVariant::fromValue(AccentChoice{label, shownName, AccentColors::color(accent)});
    }
    return choices;
}

int AccentChoice::placeOf(const std::optional<std::string>& stored) {
    return static_cast<int>(std::ranges::find(allCases, AccentColors::fromStored(stored)) - allCases.begin());
}

std::optional<std::string> AccentChoice::storedAt(int place) {
    const auto index = static_cast<std::size_t>(place);
    return index < allCases.size() ? std::optional(AccentColors::rawValue(allCases[index])) : std::nullopt;
}

} // namespace veslora
