// SPDX-License-Identifier: MIT
#include "VesloraUI/KeepAwake/KeepAwakeActivityPresenter.h"

#include "VesloraCore/KeepAwake/KeepAwakeText.h"
#include "VesloraUI/Support/ReadersWords.h"

namespace veslora {

void KeepAwakeActivityPresenter::start() {
    follow(m_keepAwake, &KeepAwakeModel::stateChanged);
}

void KeepAwakeActivityPresenter::setDate(double date) {
    m_date = date;
    refresh();
}

void KeepAwakeActivityPresenter::read() {
    if (m_keepAwake->isOn()) {
        const auto left = m_keepAwake->remaining();
        show(m_text,
             left ? QString::fromStdString(KeepAwakeText::shortText(*left, readersWords())) : QString());
    }
}

} // namespace veslora
