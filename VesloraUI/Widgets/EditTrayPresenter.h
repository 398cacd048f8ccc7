// SPDX-License-Identifier: MIT
// The tray below the rack, ready for display: the space between widgets, and the accents to choose from.
#pragma once

#include "VesloraUI/Support/Presenter.h"
#include "VesloraUI/Widgets/RackModel.h"

#include <QString>
#include <QVariantList>

namespace veslora {

class EditTrayPresenter : public veslora::Presenter {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(veslora::RackModel* rack MEMBER m_rack REQUIRED FINAL)
    Q_PROPERTY(QString automaticHelp READ automaticHelp NOTIFY changed FINAL)
    /// The space that the user set, as in "60 pt", also while it is automatic.
    Q_PROPERTY(QString spacingText READ spacingText NOTIFY changed FINAL)
    /// The same for who cannot see where it stands.
    Q_PROPERTY(QString spacingName READ spacingName NOTIFY changed FINAL)
    /// `AccentChoice`s.
    Q_PROPERTY(QVariantList accents READ accents CONSTANT FINAL)
    /// The place of the one in use among them.
    Q_PROPERTY(int accent READ accent NOTIFY changed FINAL)

  public:
    using Presenter::Presenter;

    [[nodiscard]] QString automaticHelp() const { return m_shown.automaticHelp; }
    [[nodiscard]] QString spacingText() const { return m_shown.spacingText; }
    [[nodiscard]] QString spacingName() const { return tr("Space between widgets, %1").arg(spacingText()); }
    [[nodiscard]] static QVariantList accents();
    [[nodiscard]] int accent() const { return m_shown.accent; }

    /// Keeps the space that the user set, for when it is used again.
    Q_INVOKABLE void toggleAutomatic();
    /// Stores an accent by its place; any other place does nothing.
    Q_INVOKABLE void chooseAccent(int place);

  protected:
    void start() override;
    void read() override;

  private:
    struct Shown {
        QString automaticHelp;
        QString spacingText;
        int accent = 0;
        bool operator==(const Shown&) const = default;
    };

    RackModel* m_rack = nullptr;
    Defaults* m_settings = nullptr;
    Shown m_shown;
};

} // namespace veslora
