// SPDX-License-Identifier: MIT
#include "VesloraUI/Widgets/WidgetTitle.h"

#include <QCoreApplication>

namespace veslora {

QString shownTitle(WidgetID id) {
    return QCoreApplication::translate("Widgets", title(id).data());
}

} // namespace veslora
