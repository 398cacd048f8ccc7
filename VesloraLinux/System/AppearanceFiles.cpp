// SPDX-License-Identifier: MIT
#include "VesloraLinux/System/AppearanceFiles.h"

#include "VesloraLinux/System/AppearanceText.h"
#include "VesloraUI/Platform/Logs.h"

#include <optional>
#include <utility>

namespace veslora {
namespace {

/// Far above what a desktop writes, and read in a moment.
constexpr std::size_t cap = std::size_t{256} << 10;

std::optional<std::string> textOf(Files& files, const std::string& path) {
    // Users who keep their configuration elsewhere put links in its place.
    auto result = files.read(path, {.links = Links::follow, .cap = cap});
    if (!result && result.error != std::errc::no_such_file_or_directory &&
        result.error != std::errc::not_a_directory) {
        qCWarning(Logs::system, "can't read %s: %s", Logs::place(path).c_str(),
                  result.error.message().c_str());
    }
    return result ? std::optional(std::move(result.bytes)) : std::nullopt;
}

} // namespace

AppearanceFiles::AppearanceFiles(Files& files, DirectoryWatcher& watcher, const std::string& configuration)
    : m_files(files),
      m_watcher(watcher), m_places{Place{configuration, nullptr}, Place{configuration + "/gtk-4.0", nullptr},
                                   Place{configuration + "/gtk-3.0", nullptr}} {}

void AppearanceFiles::follow(Tell tell) {
    m_tell = std::move(tell);
    look();
}

void AppearanceFiles::stop() {
    m_tell = nullptr;
    for (Place& place : m_places) {
        place.watch.reset();
    }
}

/// First watches, so that no change falls between the look and the watch.
void AppearanceFiles::look() {
    for (Place& place : m_places) {
        watch(place);
    }
    if (m_tell) {
        m_tell(read());
    }
}

/// A folder that is made later is seen in the one above it, which is the first.
void AppearanceFiles::watch(Place& place) {
    if (m_tell && (!place.watch || !place.watch->isActive())) {
        place.watch = m_watcher.watch(place.directory, DirectoryChanges::any, [this] { look(); });
    }
}

DesktopAppearance AppearanceFiles::read() {
    const auto kde = textOf(m_files, m_places[0].directory + "/kdeglobals");
    const auto gtk4 = textOf(m_files, m_places[1].directory + "/settings.ini");
    const auto gtk3 = textOf(m_files, m_places[2].directory + "/settings.ini");
    using AppearanceText::firstOf;
    const auto words =
        firstOf(firstOf(AppearanceText::ofGtk(gtk4.value_or("")), AppearanceText::ofGtk(gtk3.value_or(""))),
                AppearanceText::ofKde(kde.value_or("")));
    DesktopAppearance appearance;
    appearance.isTold = kde || gtk4 || gtk3;
    appearance.colorScheme = words.colorScheme.value_or(ColorScheme::none);
    appearance.highContrast = words.highContrast.value_or(false);
    appearance.reducedMotion = words.reducedMotion.value_or(false);
    return appearance;
}

} // namespace veslora
