// SPDX-License-Identifier: MIT
#include "VesloraUI/Style/Views.h"

#include "VesloraUI/Platform/Logs.h"
#include "VesloraUI/Style/StyleImages.h"
#include "VesloraUI/Style/ViewEnvironment.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <QtQml/QQmlExtensionPlugin>

Q_IMPORT_QML_PLUGIN(VesloraViews)

namespace veslora {

void prepareEngine(QQmlEngine& engine, ViewEnvironment& environment) {
    engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
    engine.addImageProvider(QStringLiteral("veslora"), new StyleImages);
    environment.installOn(engine);
}

std::unique_ptr<QObject> createView(QQmlEngine& engine, const QString& file, const QVariantMap& properties) {
    QQmlComponent component(&engine, QUrl(QStringLiteral("qrc:/qt/qml/Veslora/") + file));
    if (!component.isReady()) {
        qCCritical(Logs::views) << component.errorString();
        return nullptr;
    }
    std::unique_ptr<QObject> view(component.createWithInitialProperties(properties));
    if (!view) {
        qCCritical(Logs::views) << component.errorString();
    }
    return view;
}

} // namespace veslora
