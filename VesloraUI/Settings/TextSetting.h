// SPDX-License-Identifier: MIT
// One text of the settings as a view binds to it: it follows the store, and writing it writes the store.
#pragma once

#include "VesloraUI/Settings/SettingBinding.h"

namespace veslora {

class TextSetting : public veslora::SettingBinding {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString value READ value WRITE setValue NOTIFY valueChanged FINAL)

  public:
    using SettingBinding::SettingBinding;

    [[nodiscard]] QString value() const { return m_value; }
    void setValue(const QString& value);

  protected:
    void read() override;

  private:
    QString m_value;
};

} // namespace veslora
