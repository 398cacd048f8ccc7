// SPDX-License-Identifier: MIT
#include "VesloraLinux/Audio/PipeWireSoundServer.h"

#include "VesloraLinux/Audio/PipeWireOpenSession.h"
#include "VesloraLinux/Audio/PipeWireProbe.h"

#include <QByteArray>
#include <QtGlobal>

#include <unistd.h>

#include <algorithm>
#include <array>
#include <utility>

namespace veslora {

PipeWireSoundServer::PipeWireSoundServer(PipeWireOptions options) : m_options(std::move(options)) {}

std::optional<SessionEnd> PipeWireSoundServer::play(OpenStream& stream) const {
    const auto library = hasSocket() ? PipeWireLibrary::load(m_options.library) : nullptr;
    if (!library) {
        return std::nullopt;
    }
    PipeWireOpenSession session(*library, m_options, stream);
    return session.run();
}

bool PipeWireSoundServer::isThere(const OpenStream& stream) const {
    const auto library = hasSocket() ? PipeWireLibrary::load(m_options.library) : nullptr;
    if (!library) {
        return false;
    }
    PipeWireProbe probe(*library, m_options, stream.stopDescriptor);
    return probe.run() == SessionEnd::finished;
}

/// The library looks at the same places, but to load it takes milliseconds and a megabyte, for nothing on a
/// desktop without PipeWire.
bool PipeWireSoundServer::hasSocket() const {
    if (!m_options.server.empty() || qEnvironmentVariableIsSet("PIPEWIRE_REMOTE")) {
        return true;
    }
    constexpr std::array folders{"PIPEWIRE_RUNTIME_DIR", "XDG_RUNTIME_DIR"};
    return std::ranges::any_of(folders, [](const char* folder) {
        const QByteArray path = qgetenv(folder);
        return !path.isEmpty() && access((path + "/pipewire-0").constData(), F_OK) == 0;
    });
}

} // namespace veslora
