// SPDX-License-Identifier: MIT
#include "VesloraUI/Settings/LoginItemManager.h"

#include "VesloraUI/Platform/LoginItem.h"
#include "VesloraUI/Platform/Observable.h"
#include "VesloraUI/Support/FileReasons.h"

namespace veslora {

LoginItemManager::LoginItemManager(LoginItem& item) : m_item(item), m_isEnabled(item.isEnabled()) {}

void LoginItemManager::setEnabled(bool isOn) {
    const std::error_code error = isOn ? m_item.enable() : m_item.disable();
    const QString message = error ? tr("Couldn't write %1: %2.")
                                        .arg(QString::fromStdString(m_item.place()), FileReasons::text(error))
                                  : QString();
    assign(this, m_errorMessage, message, &LoginItemManager::errorMessageChanged);
    refresh();
}

void LoginItemManager::refresh() {
    assign(this, m_isEnabled, m_item.isEnabled(), &LoginItemManager::isEnabledChanged);
}

} // namespace veslora
