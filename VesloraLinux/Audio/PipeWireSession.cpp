// SPDX-License-Identifier: MIT
#include "VesloraLinux/Audio/PipeWireSession.h"

#include "VesloraUI/Platform/Logs.h"

#include <cerrno>
#include <charconv>
#include <cstring>
#include <string_view>

namespace veslora {
namespace {

/// A property that is another object's number.
std::optional<std::uint32_t> number(const spa_dict& properties, const char* key) {
    const char* const text = spa_dict_lookup(&properties, key);
    std::uint32_t value = 0;
    if (text == nullptr || std::from_chars(text, text + std::strlen(text), value).ec != std::errc()) {
        return std::nullopt;
    }
    return value;
}

bool isSink(const spa_dict& properties) {
    const char* const text = spa_dict_lookup(&properties, PW_KEY_MEDIA_CLASS);
    const std::string_view mediaClass = text == nullptr ? "" : text;
    return mediaClass == "Audio/Sink" || mediaClass == "Audio/Duplex";
}

} // namespace

PipeWireSession::PipeWireSession(const PipeWireLibrary& library, const PipeWireOptions& options,
                                 int stopDescriptor)
    : m_library(library), m_options(options), m_loop(library.loop_new(nullptr)) {
    if (m_loop == nullptr) {
        return;
    }
    const auto stopped = [](void* session, int, std::uint32_t) {
        static_cast<PipeWireSession*>(session)->end(SessionEnd::stopped);
    };
    if (pw_loop_add_io(m_loop, stopDescriptor, SPA_IO_IN, false, stopped, this) == nullptr) {
        return;
    }
    // That configuration asks for a thread that the kernel prefers, where the user may have one: the server
    // waits for a block no longer than it plays the one before.
    m_context = m_library.context_new(
        m_loop, m_library.properties_new(PW_KEY_CONFIG_NAME, "client-rt.conf", nullptr), 0);
    if (m_context == nullptr) {
        return;
    }
    pw_properties* const properties = m_library.properties_new(PW_KEY_APP_NAME, "Veslora", nullptr);
    if (!m_options.server.empty()) {
        m_library.properties_set(properties, PW_KEY_REMOTE_NAME, m_options.server.c_str());
    }
    m_core = m_library.context_connect(m_context, properties, 0);
    if (m_core != nullptr) {
        listen();
    }
}

PipeWireSession::~PipeWireSession() {
    if (m_registry != nullptr) {
        spa_hook_remove(&m_registryHook);
        m_library.proxy_destroy(reinterpret_cast<pw_proxy*>(m_registry));
    }
    if (m_core != nullptr) {
        spa_hook_remove(&m_coreHook);
        m_library.core_disconnect(m_core);
    }
    if (m_context != nullptr) {
        m_library.context_destroy(m_context);
    }
    if (m_loop != nullptr) {
        m_library.loop_destroy(m_loop);
    }
}

void PipeWireSession::listen() {
    m_coreEvents.version = PW_VERSION_CORE_EVENTS;
    m_coreEvents.done = [](void* session, std::uint32_t, int sequence) {
        static_cast<PipeWireSession*>(session)->answered(sequence);
    };
    m_coreEvents.error = [](void* session, std::uint32_t id, int, int result, const char* message) {
        static_cast<PipeWireSession*>(session)->lost(id, result, message);
    };
    pw_core_add_listener(m_core, &m_coreHook, &m_coreEvents, this);
    m_registry = pw_core_get_registry(m_core, PW_VERSION_REGISTRY, 0);
    if (m_registry == nullptr) {
        return;
    }
    m_registryEvents.version = PW_VERSION_REGISTRY_EVENTS;
    m_registryEvents.global = [](void* session, std::uint32_t id, std::uint32_t, const char* type,
                                 std::uint32_t, const spa_dict* properties) {
        if (properties != nullptr) {
            static_cast<PipeWireSession*>(session)->objectAdded(id, type, *properties);
        }
    };
    m_registryEvents.global_remove = [](void* session, std::uint32_t id) {
        static_cast<PipeWireSession*>(session)->objectRemoved(id);
    };
    pw_registry_add_listener(m_registry, &m_registryHook, &m_registryEvents, this);
    m_question = pw_core_sync(m_core, PW_ID_CORE, 0);
}

std::optional<SessionEnd> PipeWireSession::run() {
    if (!m_question) {
        return std::nullopt;
    }
    m_deadline = std::chrono::steady_clock::now() + m_options.answer;
    pw_loop_enter(m_loop);
    while (!m_isOver) {
        iterate();
    }
    pw_loop_leave(m_loop);
    return m_end;
}

void PipeWireSession::iterate() {
    const auto left =
        std::chrono::ceil<std::chrono::milliseconds>(m_deadline - std::chrono::steady_clock::now());
    if (left.count() <= 0) {
        timeIsUp();
        return;
    }
    const int result = pw_loop_iterate(m_loop, static_cast<int>(left.count()));
    if (result < 0 && result != -EINTR) {
        fail("the server can't be waited for", std::strerror(-result));
    }
}

void PipeWireSession::timeIsUp() {
    if (!m_isReady) {
        qCWarning(Logs::audio, "PipeWire does not answer");
        m_isOver = true;
    } else if (hasProgress()) {
        m_deadline = std::chrono::steady_clock::now() + m_options.patience;
    } else {
        fail("the server makes no progress", std::strerror(ETIMEDOUT));
    }
}

void PipeWireSession::objectAdded(std::uint32_t id, const std::string& type, const spa_dict& properties) {
    if (type == PW_TYPE_INTERFACE_Node && isSink(properties)) {
        m_sinks.insert(id);
    } else if (type == PW_TYPE_INTERFACE_Link) {
        const auto from = number(properties, PW_KEY_LINK_OUTPUT_NODE);
        const auto to = number(properties, PW_KEY_LINK_INPUT_NODE);
        if (from && to) {
            m_links.insert_or_assign(id, Link{*from, *to});
            linksChanged();
        }
    }
}

void PipeWireSession::objectRemoved(std::uint32_t id) {
    m_sinks.erase(id);
    if (m_links.erase(id) > 0) {
        linksChanged();
    }
}

std::set<std::uint32_t> PipeWireSession::targetsOf(std::uint32_t node) const {
    std::set<std::uint32_t> targets;
    for (const auto& [id, link] : m_links) {
        if (link.from == node) {
            targets.insert(link.to);
        }
    }
    return targets;
}

void PipeWireSession::answered(int sequence) {
    if (m_isReady || sequence != m_question) {
        return;
    }
    if (m_sinks.empty()) {
        qCInfo(Logs::audio, "PipeWire has no device to play to");
        m_isOver = true;
        return;
    }
    qCInfo(Logs::audio, "reached PipeWire");
    m_isReady = true;
    m_deadline = std::chrono::steady_clock::now() + m_options.patience;
    serverReady();
}

/// Other objects than the connection itself have errors that say nothing of it.
void PipeWireSession::lost(std::uint32_t id, int result, const char* message) {
    if (id == PW_ID_CORE && result == -EPIPE) {
        fail("the connection is lost", message);
    }
}

void PipeWireSession::finish() {
    end(SessionEnd::finished);
}

void PipeWireSession::fail(const char* what, const char* reason) {
    // What follows from the first failure is none of its own.
    if (!m_isOver) {
        qCWarning(Logs::audio, "no sound from PipeWire: %s: %s", what, reason);
        end(SessionEnd::failed);
    }
}

void PipeWireSession::end(SessionEnd how) {
    if (!m_isOver) {
        m_isOver = true;
        m_end = how;
    }
}

} // namespace veslora
