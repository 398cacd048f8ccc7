// SPDX-License-Identifier: MIT
// libgio, which reads GNOME's settings, loaded where that is the desktop: it takes more than a megabyte, and
// there need not be any.
#pragma once

// Qt's word for a section of a class is the name of a field there.
#pragma push_macro("signals")
#undef signals
#include <gio/gio.h>
#pragma pop_macro("signals")

#include <memory>
#include <string>

namespace veslora {

/// The functions in use, under their names without "g_".
struct GioLibrary {
    /// Null where there is no such library, or one that lacks a function. It stays loaded. Any thread.
    [[nodiscard]] static std::unique_ptr<GioLibrary> load(const std::string& fileName);

    decltype(&g_settings_schema_source_get_default) settings_schema_source_get_default = nullptr;
    decltype(&g_settings_schema_source_lookup) settings_schema_source_lookup = nullptr;
    decltype(&g_settings_schema_get_path) settings_schema_get_path = nullptr;
    decltype(&g_settings_schema_has_key) settings_schema_has_key = nullptr;
    decltype(&g_settings_schema_get_key) settings_schema_get_key = nullptr;
    decltype(&g_settings_schema_unref) settings_schema_unref = nullptr;
    decltype(&g_settings_schema_key_get_value_type) settings_schema_key_get_value_type = nullptr;
    decltype(&g_settings_schema_key_unref) settings_schema_key_unref = nullptr;
    decltype(&g_variant_type_equal) variant_type_equal = nullptr;
    decltype(&g_settings_new_full) settings_new_full = nullptr;
    decltype(&g_settings_get_boolean) settings_get_boolean = nullptr;
    decltype(&g_signal_connect_data) signal_connect_data = nullptr;
    decltype(&g_signal_handler_disconnect) signal_handler_disconnect = nullptr;
    decltype(&g_object_unref) object_unref = nullptr;
};

} // namespace veslora
