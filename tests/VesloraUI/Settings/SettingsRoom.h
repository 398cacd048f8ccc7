// SPDX-License-Identifier: MIT
// What the settings window is made of, and whether all of it has the room that it needs.
#pragma once

#include "tests/VesloraUI/Settings/SettingsScene.h"

#include <QRectF>
#include <QString>

#include <string>
#include <vector>

namespace veslora {

/// A text or a control, as far as they could get into each other's way.
struct RoomPart {
    QString name;
    QRectF place; ///< in the window
};

/// Every part that can be seen, in the order of the tree; each text is seen to have room in its place.
[[nodiscard]] std::vector<RoomPart> partsOfWindow(const SettingsScene& scene, const std::string& when);

/// That no text is cut or elided, and that no part of the open page lies on another or beyond the window.
void expectRoomOnPage(const SettingsScene& scene, const std::string& when);
/// The same with the tabs.
void expectRoomInWindow(const SettingsScene& scene, const std::string& when);

} // namespace veslora
