// SPDX-License-Identifier: MIT
#include "VesloraLinux/Audio/PulseLibrary.h"

#include "VesloraLinux/Shared/LoadedLibrary.h"
#include "VesloraUI/Platform/Logs.h"

namespace veslora {
namespace {

bool findContext(const LoadedLibrary& library, PulseLibrary& found) {
    return library.find("pa_mainloop_new", found.mainloop_new) &&
           library.find("pa_mainloop_free", found.mainloop_free) &&
           library.find("pa_mainloop_get_api", found.mainloop_get_api) &&
           library.find("pa_mainloop_prepare", found.mainloop_prepare) &&
           library.find("pa_mainloop_poll", found.mainloop_poll) &&
           library.find("pa_mainloop_dispatch", found.mainloop_dispatch) &&
           library.find("pa_context_new", found.context_new) &&
           library.find("pa_context_unref", found.context_unref) &&
           library.find("pa_context_set_state_callback", found.context_set_state_callback) &&
           library.find("pa_context_get_state", found.context_get_state) &&
           library.find("pa_context_connect", found.context_connect) &&
           library.find("pa_context_errno", found.context_errno) &&
           library.find("pa_context_get_server", found.context_get_server) &&
           library.find("pa_strerror", found.strerror) &&
           library.find("pa_context_disconnect", found.context_disconnect);
}

bool findStream(const LoadedLibrary& library, PulseLibrary& found) {
    return library.find("pa_proplist_new", found.proplist_new) &&
           library.find("pa_proplist_free", found.proplist_free) &&
           library.find("pa_proplist_sets", found.proplist_sets) &&
           library.find("pa_stream_new_with_proplist", found.stream_new_with_proplist) &&
           library.find("pa_stream_unref", found.stream_unref) &&
           library.find("pa_stream_set_state_callback", found.stream_set_state_callback) &&
           library.find("pa_stream_set_write_callback", found.stream_set_write_callback) &&
           library.find("pa_stream_set_moved_callback", found.stream_set_moved_callback) &&
           library.find("pa_stream_set_underflow_callback", found.stream_set_underflow_callback) &&
           library.find("pa_stream_get_latency", found.stream_get_latency) &&
           library.find("pa_stream_get_state", found.stream_get_state) &&
           library.find("pa_stream_connect_playback", found.stream_connect_playback) &&
           library.find("pa_stream_disconnect", found.stream_disconnect) &&
           library.find("pa_stream_begin_write", found.stream_begin_write) &&
           library.find("pa_stream_cancel_write", found.stream_cancel_write) &&
           library.find("pa_stream_write", found.stream_write) &&
           library.find("pa_stream_drain", found.stream_drain) &&
           library.find("pa_operation_unref", found.operation_unref);
}

} // namespace

std::unique_ptr<PulseLibrary> PulseLibrary::load(const std::string& fileName) {
    const LoadedLibrary library(fileName);
    if (!library) {
        qCInfo(Logs::audio, "no sound by libpulse: %s", LoadedLibrary::error());
        return nullptr;
    }
    auto found = std::make_unique<PulseLibrary>();
    if (!findContext(library, *found) || !findStream(library, *found)) {
        qCWarning(Logs::audio, "no sound by libpulse, as a function is missing: %s", LoadedLibrary::error());
        return nullptr;
    }
    return found;
}

} // namespace veslora
