// SPDX-License-Identifier: MIT
#include "VesloraLinux/System/GnomeBanners.h"

#include "VesloraLinux/System/GioLibrary.h"
#include "VesloraUI/Platform/Logs.h"

#include <QAbstractEventDispatcher>

#include <utility>

namespace veslora {
namespace {

constexpr const char* schemaName = "org.gnome.desktop.notifications";
constexpr const char* key = "show-banners";
constexpr const char* changeOfKey = "changed::show-banners";

/// What the library would end the process for is asked about first: a setting that is not there, that has no
/// place of its own or is no truth value.
bool isUsable(const GioLibrary& gio, GSettingsSchema* schema) {
    if (gio.settings_schema_get_path(schema) == nullptr || gio.settings_schema_has_key(schema, key) == 0) {
        return false;
    }
    GSettingsSchemaKey* const description = gio.settings_schema_get_key(schema, key);
    const bool isTruth = gio.variant_type_equal(gio.settings_schema_key_get_value_type(description),
                                                G_VARIANT_TYPE_BOOLEAN) != 0;
    gio.settings_schema_key_unref(description);
    return isTruth;
}

/// Null where the desktop has no such setting.
GSettings* openSettings(const GioLibrary& gio) {
    GSettingsSchemaSource* const source = gio.settings_schema_source_get_default();
    GSettingsSchema* const schema =
        source != nullptr ? gio.settings_schema_source_lookup(source, schemaName, 1) : nullptr;
    if (schema == nullptr) {
        return nullptr;
    }
    GSettings* const settings =
        isUsable(gio, schema) ? gio.settings_new_full(schema, nullptr, nullptr) : nullptr;
    gio.settings_schema_unref(schema);
    return settings;
}

void tellChange(GSettings* /*settings*/, const char* /*key*/, void* changed) {
    (*static_cast<std::function<void()>*>(changed))();
}

} // namespace

class GnomeBanners::Setting {
  public:
    Setting(std::unique_ptr<GioLibrary> gio, GSettings* settings, std::function<void()>& changed)
        : m_gio(std::move(gio)), m_settings(settings),
          m_handler(m_gio->signal_connect_data(m_settings, changeOfKey,
                                               reinterpret_cast<GCallback>(tellChange), &changed, nullptr,
                                               GConnectFlags())) {
        // Changes are told of a key that was read since somebody listens.
        std::ignore = isOn();
    }
    ~Setting() {
        m_gio->signal_handler_disconnect(m_settings, m_handler);
        m_gio->object_unref(m_settings);
    }
    Setting(const Setting&) = delete;
    Setting& operator=(const Setting&) = delete;

    [[nodiscard]] bool isOn() const { return m_gio->settings_get_boolean(m_settings, key) != 0; }

  private:
    std::unique_ptr<GioLibrary> m_gio;
    GSettings* m_settings;
    gulong m_handler;
};

GnomeBanners::GnomeBanners(std::function<void()> changed, std::string library)
    : m_changed(std::move(changed)), m_library(std::move(library)) {}

GnomeBanners::~GnomeBanners() = default;

void GnomeBanners::follow() {
    auto gio = GioLibrary::load(m_library);
    GSettings* const settings = gio ? openSettings(*gio) : nullptr;
    if (settings == nullptr) {
        qCInfo(Logs::system, "GNOME does not tell of its do-not-disturb");
        return;
    }
    const auto* const loop = QAbstractEventDispatcher::instance();
    if (loop == nullptr || !loop->inherits("QEventDispatcherGlib")) {
        qCInfo(Logs::system, "GNOME's do-not-disturb is only read when asked for");
    }
    m_setting = std::make_unique<Setting>(std::move(gio), settings, m_changed);
    if (areHidden()) {
        m_changed();
    }
}

bool GnomeBanners::areHidden() const {
    return m_setting && !m_setting->isOn();
}

} // namespace veslora
