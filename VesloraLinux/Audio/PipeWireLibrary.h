// SPDX-License-Identifier: MIT
// libpipewire, loaded when something is to be heard through it for the first time: most of it is modules,
// and many desktops have none.
#pragma once

#include <pipewire/pipewire.h>

#include <memory>
#include <string>

namespace veslora {

/// The functions in use, under their names without "pw_". What the headers define inline is called as it is.
struct PipeWireLibrary {
    /// Null where there is no such library, or one that lacks a function, as versions before 0.3.50 do. It is
    /// initialised and stays loaded. Any thread.
    [[nodiscard]] static std::unique_ptr<PipeWireLibrary> load(const std::string& fileName);

    decltype(&pw_init) init = nullptr;
    decltype(&pw_loop_new) loop_new = nullptr;
    decltype(&pw_loop_destroy) loop_destroy = nullptr;
    decltype(&pw_context_new) context_new = nullptr;
    decltype(&pw_context_destroy) context_destroy = nullptr;
    decltype(&pw_context_connect) context_connect = nullptr;
    decltype(&pw_core_disconnect) core_disconnect = nullptr;
    decltype(&pw_proxy_destroy) proxy_destroy = nullptr;
    decltype(&pw_properties_new) properties_new = nullptr;
    decltype(&pw_properties_set) properties_set = nullptr;
    decltype(&pw_stream_new) stream_new = nullptr;
    decltype(&pw_stream_destroy) stream_destroy = nullptr;
    decltype(&pw_stream_add_listener) stream_add_listener = nullptr;
    decltype(&pw_stream_connect) stream_connect = nullptr;
    decltype(&pw_stream_get_node_id) stream_get_node_id = nullptr;
    decltype(&pw_stream_get_time_n) stream_get_time_n = nullptr;
    decltype(&pw_stream_dequeue_buffer) stream_dequeue_buffer = nullptr;
    decltype(&pw_stream_queue_buffer) stream_queue_buffer = nullptr;
};

} // namespace veslora
