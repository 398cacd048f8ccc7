// SPDX-License-Identifier: MIT
#include "VesloraUI/Platform/Logs.h"

#include <string_view>

namespace veslora::Logs {

// From this level on a line is printed unasked: only for faults of the program itself.
#define VESLORA_LOG(name, text) Q_LOGGING_CATEGORY(name, text, QtCriticalMsg)
VESLORA_LOG(agents, "veslora.agents")
VESLORA_LOG(audio, "veslora.audio")
VESLORA_LOG(bus, "veslora.bus")
VESLORA_LOG(hooks, "veslora.hooks")
VESLORA_LOG(island, "veslora.island")
VESLORA_LOG(music, "veslora.music")
VESLORA_LOG(power, "veslora.power")
VESLORA_LOG(settings, "veslora.settings")
VESLORA_LOG(spool, "veslora.spool")
VESLORA_LOG(start, "veslora.start")
VESLORA_LOG(system, "veslora.system")
VESLORA_LOG(transcripts, "veslora.transcripts")
VESLORA_LOG(updates, "veslora.updates")
VESLORA_LOG(views, "veslora.views")
VESLORA_LOG(x11, "veslora.x11")
#undef VESLORA_LOG

void beVerbose() {
    QLoggingCategory::setFilterRules(QStringLiteral("veslora.*=true"));
}

std::string place(const std::string& path) {
    constexpr std::string_view transcripts = "/projects/";
    const std::size_t found = path.find(transcripts);
    return found == std::string::npos ? path : path.substr(0, found + transcripts.size()) + "...";
}

} // namespace veslora::Logs
