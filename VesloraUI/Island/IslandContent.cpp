// SPDX-License-Identifier: MIT
#include "VesloraUI/Island/IslandContent.h"

#include "VesloraUI/Island/NotchOutline.h"
#include "VesloraUI/Island/NotchViewModel.h"
#include "VesloraUI/Style/Views.h"

#include <QPointer>

namespace veslora {

IslandContent makeIslandContent(QQmlEngine& engine, NotchViewModel& model) {
    auto view = createView(engine, QStringLiteral("Island/NotchView.qml"),
                           {{QStringLiteral("model"), QVariant::fromValue(&model)}});
    IslandContent content;
    content.item.reset(qobject_cast<QQuickItem*>(view.release()));
    const QPointer outline =
        content.item ? content.item->property("outline").value<NotchOutline*>() : nullptr;
    content.outline = [outline, root = QPointer(content.item.get())] {
        return outline && root ? outline->path().translated(outline->mapToItem(root, QPointF()))
                               : QPainterPath();
    };
    return content;
}

} // namespace veslora
