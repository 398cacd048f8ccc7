// SPDX-License-Identifier: MIT
// Whether GNOME shows notifications as they come, which its do-not-disturb turns off. It is a setting of the
// desktop's, "show-banners" of org.gnome.desktop.notifications, which its settings portal does not give.
// Main thread only.
#pragma once

#include <functional>
#include <memory>
#include <string>

namespace veslora {

class GnomeBanners {
  public:
    /// `changed` is called when it may be otherwise, as long as Qt's events come by way of GLib's loop, which
    /// carries the news; `areHidden` is right without that too. `library` is libgio's file.
    explicit GnomeBanners(std::function<void()> changed, std::string library = "libgio-2.0.so.0");
    ~GnomeBanners();
    GnomeBanners(const GnomeBanners&) = delete;
    GnomeBanners& operator=(const GnomeBanners&) = delete;

    /// Loads the library and begins to listen. Called once; without the library or the setting nothing
    /// follows from it.
    void follow();
    /// As the setting is now; false before `follow`.
    [[nodiscard]] bool areHidden() const;

  private:
    class Setting;

    std::function<void()> m_changed;
    std::string m_library;
    std::unique_ptr<Setting> m_setting;
};

} // namespace veslora
