// SPDX-License-Identifier: MIT
// What the settings window asks for, made of a scene's fakes.
#pragma once

#include "VesloraUI/Settings/AccentPreview.h"
#include "VesloraUI/Settings/SettingsWindow.h"
#include "tests/VesloraUI/Fixtures/Scene.h"

#include <QVariantMap>

namespace veslora {

struct SettingsParts {
    explicit SettingsParts(Scene& scene)
        : accentPreview(previewSeams(scene)),
          properties({{"agents", QVariant::fromValue(&scene.agents)},
                      {"metronomePreviewer", QVariant::fromValue(&scene.previewer)},
                      {"accentPreview", QVariant::fromValue(&accentPreview)},
                      {"loginItem", QVariant::fromValue(&scene.loginItem)},
                      {"updater", QVariant::fromValue(&scene.updater)},
                      {"version", "1.2.3"}}) {}

    [[nodiscard]] static SettingsWindow::Models models(Scene& scene) {
        return {scene.agents, scene.previewer, scene.loginItem, scene.updater};
    }

    [[nodiscard]] static AccentPreview::Seams previewSeams(Scene& scene) {
        return {scene.platform.time, scene.platform.disk, scene.platform.watches, scene.platform.measuring,
                scene.platform.paths.configuration};
    }

    AccentPreview accentPreview;
    QVariantMap properties;
};

} // namespace veslora
