// SPDX-License-Identifier: MIT
#include "VesloraUI/KeepAwake/KeepAwakeActivityPresenter.h"

#include "VesloraCore/KeepAwake/KeepAwakeText.h"
#include "VesloraUI/Platform/Observable.h"

namespace veslora {

void KeepAwakeActivityPresenter::componentComplete() {
    m_isComplete = true;
    connect(m_keepAwake, &KeepAwakeModel::stateChanged, this, &KeepAwakeActivityPresenter::read);
    read();
}

void KeepAwakeActivityPresenter::setDate(double date) {
    m_date = date;
    read();
}

void KeepAwakeActivityPresenter::read() {
    if (!m_isComplete || !m_keepAwake->isOn()) {
        return;
    }
    const auto left = m_keepAwake->remaining();
    const QString text = left ? QString::fromStdString(KeepAwakeText::shortText(*left)) : QString();
    assign(this, m_text, text, &KeepAwakeActivityPresenter::textChanged);
}

} // namespace veslora
