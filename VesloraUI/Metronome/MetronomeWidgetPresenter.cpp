// SPDX-License-Identifier: MIT
#include "VesloraUI/Metronome/MetronomeWidgetPresenter.h"

namespace veslora {

void MetronomeWidgetPresenter::change(int by) {
    const int before = m_metronome->bpm();
    m_metronome->adjust(by);
    if (m_metronome->bpm() != before) {
        environment().haptics().perform(HapticPattern::alignment);
    }
}

} // namespace veslora
