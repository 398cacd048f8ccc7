// SPDX-License-Identifier: MIT
// libpulse, which speaks to PulseAudio and PipeWire alike, loaded when something is to be heard for the first
// time: it takes some milliseconds and more than a megabyte, and there need not be any.
#pragma once

#include <pulse/pulseaudio.h>

#include <memory>
#include <string>

namespace veslora {

/// The functions in use, under their names without "pa_".
struct PulseLibrary {
    /// Null where there is no such library, or one that lacks a function. It stays loaded. Any thread.
    [[nodiscard]] static std::unique_ptr<PulseLibrary> load(const std::string& fileName);

    decltype(&pa_mainloop_new) mainloop_new = nullptr;
    decltype(&pa_mainloop_free) mainloop_free = nullptr;
    decltype(&pa_mainloop_get_api) mainloop_get_api = nullptr;
    decltype(&pa_mainloop_prepare) mainloop_prepare = nullptr;
    decltype(&pa_mainloop_poll) mainloop_poll = nullptr;
    decltype(&pa_mainloop_dispatch) mainloop_dispatch = nullptr;
    decltype(&pa_context_new) context_new = nullptr;
    decltype(&pa_context_unref) context_unref = nullptr;
    decltype(&pa_context_set_state_callback) context_set_state_callback = nullptr;
    decltype(&pa_context_get_state) context_get_state = nullptr;
    decltype(&pa_context_connect) context_connect = nullptr;
    decltype(&pa_context_errno) context_errno = nullptr;
    decltype(&pa_context_get_server) context_get_server = nullptr;
    decltype(&pa_strerror) strerror = nullptr;
    decltype(&pa_context_disconnect) context_disconnect = nullptr;
    decltype(&pa_proplist_new) proplist_new = nullptr;
    decltype(&pa_proplist_free) proplist_free = nullptr;
    decltype(&pa_proplist_sets) proplist_sets = nullptr;
    decltype(&pa_stream_new_with_proplist) stream_new_with_proplist = nullptr;
    decltype(&pa_stream_unref) stream_unref = nullptr;
    decltype(&pa_stream_set_state_callback) stream_set_state_callback = nullptr;
    decltype(&pa_stream_set_write_callback) stream_set_write_callback = nullptr;
    decltype(&pa_stream_set_moved_callback) stream_set_moved_callback = nullptr;
    decltype(&pa_stream_set_underflow_callback) stream_set_underflow_callback = nullptr;
    decltype(&pa_stream_get_latency) stream_get_latency = nullptr;
    decltype(&pa_stream_get_state) stream_get_state = nullptr;
    decltype(&pa_stream_connect_playback) stream_connect_playback = nullptr;
    decltype(&pa_stream_disconnect) stream_disconnect = nullptr;
    decltype(&pa_stream_begin_write) stream_begin_write = nullptr;
    decltype(&pa_stream_cancel_write) stream_cancel_write = nullptr;
    decltype(&pa_stream_write) stream_write = nullptr;
    decltype(&pa_stream_drain) stream_drain = nullptr;
    decltype(&pa_operation_unref) operation_unref = nullptr;
};

} // namespace veslora
