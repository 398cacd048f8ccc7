// SPDX-License-Identifier: MIT
// The whole island in a scene, on a screen of 1440 by 900 without a notch: judged after every change as the
// program does it, and without a panel.
#pragma once

#include "VesloraUI/Island/NotchOutline.h"
#include "VesloraUI/Island/NotchViewModel.h"
#include "VesloraUI/Support/QtTextMeasuring.h"
#include "tests/VesloraUI/Fixtures/Scene.h"

#include <QTest>

namespace veslora {

class SceneIsland {
  public:
    explicit SceneIsland(Scene& scene) : m_scene(scene) {
        const auto refresh = [this] { this->refresh(); };
        scene.agents.setOnChange(refresh);
        scene.keepAwake.onChange = refresh;
        scene.timer.onPresentationChange = refresh;
        scene.rack.onIslandWidthChange = [refresh](double) { refresh(); };
        scene.rack.onEditingChange = [refresh](bool) { refresh(); };
    }
    SceneIsland(const SceneIsland&) = delete;
    SceneIsland& operator=(const SceneIsland&) = delete;
    ~SceneIsland() { m_scene.close(); }

    void refresh() {
        m_judge.judge(m_scene.platform.time.now());
        model.refresh();
    }
    void show(QSize size = {1134, 250}) {
        m_scene.show("Island/NotchView.qml", {{"model", QVariant::fromValue(&model)}}, size);
    }
    [[nodiscard]] NotchOutline& outline() const {
        return *m_scene.view().property("outline").value<NotchOutline*>();
    }
    [[nodiscard]] bool hasLeaving() const { return m_scene.itemWith("isLeaving", true) != nullptr; }
    /// Waits, with a deadline, until the island has its size and whatever left is gone.
    [[nodiscard]] bool settles() const {
        return QTest::qWaitFor([this] {
            return outline().width() == model.islandWidth() && outline().height() == model.islandHeight() &&
                   !hasLeaving();
        });
    }

    QtTextMeasuring measuring;

  private:
    Scene& m_scene;
    PresentationJudge m_judge{m_scene.models, m_scene.settings, measuring};

  public:
    NotchViewModel model{NotchGeometry(m_scene.platform.displays.screens[0].metrics), m_scene.models,
                         m_judge.judge(m_scene.platform.time.now())};
};

} // namespace veslora
