// SPDX-License-Identifier: MIT
#include "VesloraUI/Widgets/EditHeaderPresenter.h"

namespace veslora {

void EditHeaderPresenter::start() {
    follow(m_rack, &RackModel::changed);
}

void EditHeaderPresenter::read() {
    show(m_shown, {.hasPages = m_rack->pageCount() >= 2,
                   .canAdd = !m_rack->isShowingLibrary() && !m_rack->layout().available().empty()});
}

} // namespace veslora
