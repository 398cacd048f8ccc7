// SPDX-License-Identifier: MIT
// One connection to PipeWire, from its beginning to its end, which the derived class decides on: whether it
// has a device to play to, and where a stream goes. Made, run and destroyed on one thread of its own.
#pragma once

#include "VesloraLinux/Audio/PipeWireLibrary.h"
#include "VesloraLinux/Audio/SessionEnd.h"

#include <chrono>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>

namespace veslora {

struct PipeWireOptions {
    std::string library = "libpipewire-0.3.so.0";
    /// The name of a server's socket; empty for the server of the user's session.
    std::string server;
    /// How long it may take to say what it has: there may be another sound server.
    std::chrono::milliseconds answer{1000};
    /// After this time without anything played the server counts as lost.
    std::chrono::milliseconds patience{5000};
};

class PipeWireSession {
  public:
    /// `stopDescriptor` becomes readable when the session is to end early.
    PipeWireSession(const PipeWireLibrary& library, const PipeWireOptions& options, int stopDescriptor);
    PipeWireSession(const PipeWireSession&) = delete;
    PipeWireSession& operator=(const PipeWireSession&) = delete;
    virtual ~PipeWireSession();

    /// Goes on until the derived class or `stopDescriptor` ends it, or it fails. Absent where PipeWire does
    /// not run, does not answer in time, or has no sink: on some desktops it only shares the screen.
    [[nodiscard]] std::optional<SessionEnd> run();

  protected:
    /// The server has answered and has a sink.
    virtual void serverReady() = 0;
    /// A link was made or is gone.
    virtual void linksChanged() {}
    /// Asked when the patience is over: whether anything was played since then.
    [[nodiscard]] virtual bool hasProgress() { return false; }

    void finish();
    void fail(const char* what, const char* reason);

    /// The nodes that one node's output goes to.
    [[nodiscard]] std::set<std::uint32_t> targetsOf(std::uint32_t node) const;

    [[nodiscard]] const PipeWireLibrary& library() const { return m_library; }
    [[nodiscard]] pw_core* core() const { return m_core; }
    [[nodiscard]] pw_loop* loop() const { return m_loop; }

  private:
    struct Link {
        std::uint32_t from = 0;
        std::uint32_t to = 0;
    };

    void listen();
    void objectAdded(std::uint32_t id, const std::string& type, const spa_dict& properties);
    void objectRemoved(std::uint32_t id);
    void answered(int sequence);
    void lost(std::uint32_t id, int result, const char* message);
    void end(SessionEnd how);
    void iterate();
    void timeIsUp();

    const PipeWireLibrary& m_library;
    const PipeWireOptions& m_options;
    bool m_isOver = false;
    std::optional<SessionEnd> m_end; ///< counts once it is over
    std::chrono::steady_clock::time_point m_deadline;
    std::set<std::uint32_t> m_sinks;
    std::map<std::uint32_t, Link> m_links;
    std::optional<int> m_question; ///< which all of the server's objects come before the answer to
    bool m_isReady = false;

    pw_loop* m_loop = nullptr;
    pw_context* m_context = nullptr;
    pw_core* m_core = nullptr;
    pw_registry* m_registry = nullptr;
    pw_core_events m_coreEvents{};
    pw_registry_events m_registryEvents{};
    spa_hook m_coreHook{};
    spa_hook m_registryHook{};
};

} // namespace veslora
