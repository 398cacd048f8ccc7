// SPDX-License-Identifier: MIT
#include "VesloraLinux/Audio/PipeWireLibrary.h"

#include "VesloraLinux/Shared/LoadedLibrary.h"
#include "VesloraUI/Platform/Logs.h"

namespace veslora {
namespace {

bool findConnection(const LoadedLibrary& library, PipeWireLibrary& found) {
    return library.find("pw_init", found.init) && library.find("pw_loop_new", found.loop_new) &&
           library.find("pw_loop_destroy", found.loop_destroy) &&
           library.find("pw_context_new", found.context_new) &&
           library.find("pw_context_destroy", found.context_destroy) &&
           library.find("pw_context_connect", found.context_connect) &&
           library.find("pw_core_disconnect", found.core_disconnect) &&
           library.find("pw_proxy_destroy", found.proxy_destroy) &&
           library.find("pw_properties_new", found.properties_new) &&
           library.find("pw_properties_set", found.properties_set);
}

bool findStream(const LoadedLibrary& library, PipeWireLibrary& found) {
    return library.find("pw_stream_new", found.stream_new) &&
           library.find("pw_stream_destroy", found.stream_destroy) &&
           library.find("pw_stream_add_listener", found.stream_add_listener) &&
           library.find("pw_stream_connect", found.stream_connect) &&
           library.find("pw_stream_get_node_id", found.stream_get_node_id) &&
           library.find("pw_stream_get_time_n", found.stream_get_time_n) &&
           library.find("pw_stream_dequeue_buffer", found.stream_dequeue_buffer) &&
           library.find("pw_stream_queue_buffer", found.stream_queue_buffer);
}

} // namespace

std::unique_ptr<PipeWireLibrary> PipeWireLibrary::load(const std::string& fileName) {
    const LoadedLibrary library(fileName);
    if (!library) {
        qCInfo(Logs::audio, "no sound by libpipewire: %s", LoadedLibrary::error());
        return nullptr;
    }
    auto found = std::make_unique<PipeWireLibrary>();
    if (!findConnection(library, *found) || !findStream(library, *found)) {
        qCWarning(Logs::audio, "no sound by libpipewire, as a function is missing: %s",
                  LoadedLibrary::error());
        return nullptr;
    }
    // It counts how often, and from the second time on does nothing else.
    found->init(nullptr, nullptr);
    return found;
}

} // namespace veslora
