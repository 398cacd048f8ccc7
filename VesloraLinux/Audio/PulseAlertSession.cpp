// SPDX-License-Identifier: MIT
#include "VesloraLinux/Audio/PulseAlertSession.h"

#include "VesloraLinux/Audio/Mixer.h"

namespace veslora {

void PulseAlertSession::wrote(std::size_t /*samples*/) {
    if (mixer().isSilent()) {
        drain();
    }
}

void PulseAlertSession::drain() {
    stopWriting();
    const auto drained = [](pa_stream*, int success, void* session) {
        auto& self = *static_cast<PulseAlertSession*>(session);
        if (success != 0) {
            self.finish();
        } else {
            self.fail("the end was not heard");
        }
    };
    if (pa_operation* const operation = library().stream_drain(stream(), drained, this)) {
        library().operation_unref(operation);
    } else {
        fail("the end can't be waited for");
    }
}

} // namespace veslora
