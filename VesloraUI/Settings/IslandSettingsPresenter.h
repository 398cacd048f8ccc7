// SPDX-License-Identifier: MIT
// The choices of the island's tab that are no numbers: the screen and the accent.
#pragma once

#include "VesloraUI/Support/Presenter.h"

#include <QList>
#include <QString>
#include <QVariantList>

#include <string>
#include <vector>

namespace veslora {

class Defaults;
class Screens;

class IslandSettingsPresenter : public veslora::Presenter {
    Q_OBJECT
    QML_ELEMENT
    /// As people read them: the two general ones, then each by its connector where there are several, and the
    /// chosen one also while it is not connected.
    Q_PROPERTY(QList<QString> screens READ screens NOTIFY changed FINAL)
    /// The place of the chosen one among them.
    Q_PROPERTY(int screen READ screen NOTIFY changed FINAL)
    /// `AccentChoice`s.
    Q_PROPERTY(QVariantList accents READ accents CONSTANT FINAL)
    /// The place of the one in use among them.
    Q_PROPERTY(int accent READ accent NOTIFY changed FINAL)

  public:
    using Presenter::Presenter;

    [[nodiscard]] QList<QString> screens() const { return m_shown.screens; }
    [[nodiscard]] int screen() const { return m_shown.screen; }
    [[nodiscard]] static QVariantList accents();
    [[nodiscard]] int accent() const { return m_shown.accent; }

    /// Stores one by its place; any other place does nothing.
    Q_INVOKABLE void chooseScreen(int place);
    Q_INVOKABLE void chooseAccent(int place);

  protected:
    void start() override;
    void read() override;

  private:
    struct Shown {
        QList<QString> screens;
        int screen = 0;
        int accent = 0;
        bool operator==(const Shown&) const = default;
    };

    /// Those that are chosen by name.
    [[nodiscard]] std::vector<std::string> outputs() const;
    [[nodiscard]] QList<QString> namesOf(const std::vector<std::string>& outputs) const;

    Defaults* m_settings = nullptr;
    Screens* m_screens = nullptr;
    Shown m_shown;
};

} // namespace veslora
