// SPDX-License-Identifier: MIT
// One yes or no of the settings as a view binds to it: it follows the store, and writing it writes the store.
#pragma once

#include "VesloraUI/Settings/SettingBinding.h"

namespace veslora {

class BoolSetting : public veslora::SettingBinding {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool value READ value WRITE setValue NOTIFY valueChanged FINAL)

  public:
    using SettingBinding::SettingBinding;

    [[nodiscard]] bool value() const { return m_value; }
    void setValue(bool value);

  protected:
    void read() override;

  private:
    bool m_value = false;
};

} // namespace veslora
