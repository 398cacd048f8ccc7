// SPDX-License-Identifier: MIT
#include "VesloraUI/Island/Views.h"

#include "VesloraUI/Island/NotchOutline.h"
#include "VesloraUI/Island/NotchWindowController.h"
#include "VesloraUI/Style/StyleImages.h"
#include "VesloraUI/Style/ViewEnvironment.h"

#include <QLoggingCategory>
#include <QPointer>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QtQml/QQmlExtensionPlugin>

Q_IMPORT_QML_PLUGIN(VesloraViews)

namespace veslora {

namespace {
Q_LOGGING_CATEGORY(log, "veslora.views", QtWarningMsg)
} // namespace

void prepareEngine(QQmlEngine& engine, ViewEnvironment& environment) {
    engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
    engine.addImageProvider(QStringLiteral("veslora"), new StyleImages);
    environment.installOn(engine);
}

std::unique_ptr<QObject> createView(QQmlEngine& engine, const QString& file, const QVariantMap& properties) {
    QQmlComponent component(&engine, QUrl(QStringLiteral("qrc:/qt/qml/Veslora/") + file));
    if (!component.isReady()) {
        qCCritical(log) << component.errorString();
        return nullptr;
    }
    return std::unique_ptr<QObject>(component.createWithInitialProperties(properties));
}

IslandContent makeIslandContent(QQmlEngine& engine, NotchViewModel& model) {
    auto view = createView(engine, QStringLiteral("Island/NotchView.qml"),
                           {{QStringLiteral("model"), QVariant::fromValue(&model)}});
    IslandContent content;
    content.item.reset(qobject_cast<QQuickItem*>(view.release()));
    const QPointer outline =
        content.item ? content.item->property("outline").value<NotchOutline*>() : nullptr;
    content.outline = [outline, root = QPointer(content.item.get())] {
        return outline && root ? outline->path().translated(outline->mapToItem(root, {})) : QPainterPath();
    };
    return content;
}

} // namespace veslora
