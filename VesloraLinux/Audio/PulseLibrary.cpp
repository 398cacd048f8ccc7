// SPDX-License-Identifier: MIT
#include "VesloraLinux/Audio/PulseLibrary.h"

#include "VesloraUI/Platform/Logs.h"

#include <dlfcn.h>

namespace veslora {
namespace {

/// Sets `function` to the library's one of that name; false when it has none.
template <typename Function>
bool find(void* library, const char* name, Function& function) {
    function = reinterpret_cast<Function>(dlsym(library, name));
    return function != nullptr;
}

bool findContext(void* library, PulseLibrary& found) {
    return find(library, "pa_mainloop_new", found.mainloop_new) &&
           find(library, "pa_mainloop_free", found.mainloop_free) &&
           find(library, "pa_mainloop_get_api", found.mainloop_get_api) &&
           find(library, "pa_mainloop_prepare", found.mainloop_prepare) &&
           find(library, "pa_mainloop_poll", found.mainloop_poll) &&
           find(library, "pa_mainloop_dispatch", found.mainloop_dispatch) &&
           find(library, "pa_context_new", found.context_new) &&
           find(library, "pa_context_unref", found.context_unref) &&
           find(library, "pa_context_set_state_callback", found.context_set_state_callback) &&
           find(library, "pa_context_get_state", found.context_get_state) &&
           find(library, "pa_context_connect", found.context_connect) &&
           find(library, "pa_context_errno", found.context_errno) &&
           find(library, "pa_context_get_server", found.context_get_server) &&
           find(library, "pa_strerror", found.strerror) &&
           find(library, "pa_context_disconnect", found.context_disconnect);
}

bool findStream(void* library, PulseLibrary& found) {
    return find(library, "pa_proplist_new", found.proplist_new) &&
           find(library, "pa_proplist_free", found.proplist_free) &&
           find(library, "pa_proplist_sets", found.proplist_sets) &&
           find(library, "pa_stream_new_with_proplist", found.stream_new_with_proplist) &&
           find(library, "pa_stream_unref", found.stream_unref) &&
           find(library, "pa_stream_set_state_callback", found.stream_set_state_callback) &&
           find(library, "pa_stream_set_write_callback", found.stream_set_write_callback) &&
           find(library, "pa_stream_set_moved_callback", found.stream_set_moved_callback) &&
           find(library, "pa_stream_set_underflow_callback", found.stream_set_underflow_callback) &&
           find(library, "pa_stream_get_latency", found.stream_get_latency) &&
           find(library, "pa_stream_get_state", found.stream_get_state) &&
           find(library, "pa_stream_connect_playback", found.stream_connect_playback) &&
           find(library, "pa_stream_disconnect", found.stream_disconnect) &&
           find(library, "pa_stream_begin_write", found.stream_begin_write) &&
           find(library, "pa_stream_cancel_write", found.stream_cancel_write) &&
           find(library, "pa_stream_write", found.stream_write) &&
           find(library, "pa_stream_drain", found.stream_drain) &&
           find(library, "pa_operation_unref", found.operation_unref);
}

} // namespace

std::unique_ptr<PulseLibrary> PulseLibrary::load(const std::string& fileName) {
    // Never unloaded: the library keeps a destructor for every thread that used it.
    void* const library = dlopen(fileName.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
    if (library == nullptr) {
        qCInfo(Logs::audio, "no sound: %s", dlerror());
        return nullptr;
    }
    auto found = std::make_unique<PulseLibrary>();
    if (!findContext(library, *found) || !findStream(library, *found)) {
        qCWarning(Logs::audio, "no sound, as a function is missing: %s", dlerror());
        return nullptr;
    }
    return found;
}

} // namespace veslora
