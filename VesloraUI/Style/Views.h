// SPDX-License-Identifier: MIT
// How C++ comes by the views: an engine that knows them, and objects made from them.
#pragma once

#include <QObject>
#include <QString>
#include <QVariantMap>

#include <memory>

class QQmlEngine;

namespace veslora {

class ViewEnvironment;

/// Gives an engine our views, pictures and environment. The environment must outlive it.
void prepareEngine(QQmlEngine& engine, ViewEnvironment& environment);

/// Makes the object of a view's file, named by its path below the folder of all views. Null, with a line in
/// the log, if the file does not load: that is an error of ours.
[[nodiscard]] std::unique_ptr<QObject> createView(QQmlEngine& engine, const QString& file,
                                                  const QVariantMap& properties);

} // namespace veslora
