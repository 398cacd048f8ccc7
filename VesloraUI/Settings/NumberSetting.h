// SPDX-License-Identifier: MIT
// One number of the settings as a view binds to it: it follows the store, and writing it writes the store.
#pragma once

#include "VesloraUI/Settings/SettingBinding.h"

namespace veslora {

class NumberSetting : public veslora::SettingBinding {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(double value READ value WRITE setValue NOTIFY valueChanged FINAL)

  public:
    using SettingBinding::SettingBinding;

    [[nodiscard]] double value() const { return m_value; }
    void setValue(double value);

  protected:
    void read() override;

  private:
    double m_value = 0;
};

} // namespace veslora
