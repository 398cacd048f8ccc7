// SPDX-License-Identifier: MIT
#include "VesloraLinux/Audio/PulseSoundServer.h"

#include "VesloraLinux/Audio/PulseOpenSession.h"
#include "VesloraLinux/Audio/PulseProbe.h"

#include <utility>

namespace veslora {

PulseSoundServer::PulseSoundServer(PulseOptions options) : m_options(std::move(options)) {}

std::optional<SessionEnd> PulseSoundServer::play(OpenStream& stream) const {
    const auto library = PulseLibrary::load(m_options.library);
    if (!library) {
        return std::nullopt;
    }
    PulseOpenSession session(*library, m_options, stream);
    return session.run();
}

bool PulseSoundServer::isThere(const OpenStream& stream) const {
    const auto library = PulseLibrary::load(m_options.library);
    if (!library) {
        return false;
    }
    PulseProbe probe(*library, m_options, stream.mixer, stream.stopDescriptor);
    return probe.run() == SessionEnd::finished;
}

} // namespace veslora
