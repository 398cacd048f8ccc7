// SPDX-License-Identifier: MIT
#include "VesloraLinux/System/GioLibrary.h"

#include "VesloraLinux/Shared/LoadedLibrary.h"
#include "VesloraUI/Platform/Logs.h"

namespace veslora {
namespace {

bool findSchema(const LoadedLibrary& library, GioLibrary& found) {
    return library.find("g_settings_schema_source_get_default", found.settings_schema_source_get_default) &&
           library.find("g_settings_schema_source_lookup", found.settings_schema_source_lookup) &&
           library.find("g_settings_schema_get_path", found.settings_schema_get_path) &&
           library.find("g_settings_schema_has_key", found.settings_schema_has_key) &&
           library.find("g_settings_schema_get_key", found.settings_schema_get_key) &&
           library.find("g_settings_schema_unref", found.settings_schema_unref) &&
           library.find("g_settings_schema_key_get_value_type", found.settings_schema_key_get_value_type) &&
           library.find("g_settings_schema_key_unref", found.settings_schema_key_unref);
}

/// Some of them are of the libraries that it needs itself.
bool findSettings(const LoadedLibrary& library, GioLibrary& found) {
    return library.find("g_variant_type_equal", found.variant_type_equal) &&
           library.find("g_settings_new_full", found.settings_new_full) &&
           library.find("g_settings_get_boolean", found.settings_get_boolean) &&
           library.find("g_signal_connect_data", found.signal_connect_data) &&
           library.find("g_signal_handler_disconnect", found.signal_handler_disconnect) &&
           library.find("g_object_unref", found.object_unref);
}

} // namespace

std::unique_ptr<GioLibrary> GioLibrary::load(const std::string& fileName) {
    const LoadedLibrary library(fileName);
    if (!library) {
        qCInfo(Logs::system, "GNOME's settings can't be read: %s", LoadedLibrary::error());
        return nullptr;
    }
    auto found = std::make_unique<GioLibrary>();
    if (!findSchema(library, *found) || !findSettings(library, *found)) {
        qCWarning(Logs::system, "GNOME's settings can't be read, as a function is missing: %s",
                  LoadedLibrary::error());
        return nullptr;
    }
    return found;
}

} // namespace veslora
