// SPDX-License-Identifier: MIT
// What the strip beside the notch offers while the rack is edited.
#pragma once

#include "VesloraUI/Support/Presenter.h"
#include "VesloraUI/Widgets/RackModel.h"

namespace veslora {

class EditHeaderPresenter : public veslora::Presenter {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(veslora::RackModel* rack MEMBER m_rack REQUIRED FINAL)
    /// There is another page to turn to.
    Q_PROPERTY(bool hasPages READ hasPages NOTIFY changed FINAL)
    /// The library can be opened, and has something to offer.
    Q_PROPERTY(bool canAdd READ canAdd NOTIFY changed FINAL)

  public:
    using Presenter::Presenter;

    [[nodiscard]] bool hasPages() const { return m_shown.hasPages; }
    [[nodiscard]] bool canAdd() const { return m_shown.canAdd; }

  protected:
    void start() override;
    void read() override;

  private:
    struct Shown {
        bool hasPages = false;
        bool canAdd = false;
        bool operator==(const Shown&) const = default;
    };

    RackModel* m_rack = nullptr;
    Shown m_shown;
};

} // namespace veslora
