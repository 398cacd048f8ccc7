// SPDX-License-Identifier: MIT
#include "VesloraLinux/Audio/SoundServers.h"

#include "VesloraLinux/Audio/PulseSoundServer.h"
#ifdef VESLORA_PIPEWIRE
#include "VesloraLinux/Audio/PipeWireSoundServer.h"
#endif

namespace veslora {

OpenServerOutput::Servers soundServers() {
    OpenServerOutput::Servers servers;
#ifdef VESLORA_PIPEWIRE
    servers.push_back(std::make_unique<PipeWireSoundServer>());
#endif
    servers.push_back(std::make_unique<PulseSoundServer>());
    return servers;
}

} // namespace veslora
