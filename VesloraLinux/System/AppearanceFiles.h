// SPDX-License-Identifier: MIT
// The desktop's look as the configuration files of GTK and KDE tell it: for desktops on which no service
// does. Follows them as they change. Main thread only.
#pragma once

#include "VesloraUI/Platform/Appearance.h"
#include "VesloraUI/Platform/DirectoryWatcher.h"
#include "VesloraUI/Platform/Files.h"

#include <array>
#include <functional>
#include <memory>
#include <string>

namespace veslora {

class AppearanceFiles {
  public:
    using Tell = std::function<void(const DesktopAppearance&)>;

    /// `configuration` is the folder of all programs' configuration. Nothing is read or watched yet.
    AppearanceFiles(Files& files, DirectoryWatcher& watcher, const std::string& configuration);

    /// Tells what the files say, within this call and after every change of theirs. Where there are none,
    /// that nothing is told.
    void follow(Tell tell);
    /// Watches nothing any more.
    void stop();

  private:
    struct Place {
        std::string directory;
        std::unique_ptr<DirectoryWatch> watch;
    };

    void look();
    void watch(Place& place);
    [[nodiscard]] DesktopAppearance read();

    Files& m_files;
    DirectoryWatcher& m_watcher;
    std::array<Place, 3> m_places; ///< KDE's, GTK 4's, GTK 3's
    Tell m_tell;                   ///< empty while nothing is followed
};

} // namespace veslora
