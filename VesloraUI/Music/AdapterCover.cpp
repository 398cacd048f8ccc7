// SPDX-License-Identifier: MIT
#include "VesloraUI/Music/AdapterCover.h"

#include "VesloraUI/Platform/CoverDecoder.h"
#include "VesloraUI/Platform/Logs.h"

namespace veslora {

AdapterCover::AdapterCover(Scheduler& scheduler, std::function<void()> onDecoded)
    : m_scheduler(scheduler), m_onDecoded(std::move(onDecoded)) {}

void AdapterCover::take(const std::string* base64) {
    if (base64 && m_base64 && *base64 == *m_base64) {
        return;
    }
    m_task.cancel();
    m_image = {};
    m_base64 = nullptr;
    if (base64 && base64->size() <= CoverDecoder::longestText) {
        m_base64 = std::make_shared<const std::string>(*base64);
        decode();
    }
}

void AdapterCover::decode() {
    const auto decoded = std::make_shared<QImage>();
    // At low priority: nothing waits for a cover, and a large one must not keep a prompt waiting.
    m_task = m_scheduler.background(
        [decoded, base64 = m_base64] { *decoded = CoverDecoder::decode(*base64); },
        [this, decoded] {
            m_image = *decoded;
            if (m_image.isNull()) {
                qCWarning(Logs::music, "a cover of %zu characters is no picture", m_base64->size());
            }
            m_onDecoded();
        });
}

} // namespace veslora
