// SPDX-License-Identifier: MIT
// The island's view as the panel takes it.
#pragma once

#include <QPainterPath>
#include <QQuickItem>

#include <functional>
#include <memory>

class QQmlEngine;

namespace veslora {

class NotchViewModel;

/// What is on the panel: its root item, and the island's outline as drawn right now, in that item's
/// coordinates.
struct IslandContent {
    std::unique_ptr<QQuickItem> item;
    std::function<QPainterPath()> outline;
};

/// The island's view for a model, by an engine that `prepareEngine` has prepared.
[[nodiscard]] IslandContent makeIslandContent(QQmlEngine& engine, NotchViewModel& model);

} // namespace veslora
