// SPDX-License-Identifier: MIT
#include "VesloraUI/Support/Presenter.h"

namespace veslora {

void Presenter::componentComplete() {
    m_isComplete = true;
    start();
    read();
}

void Presenter::refresh() {
    if (m_isComplete) {
        read();
    }
}

} // namespace veslora
