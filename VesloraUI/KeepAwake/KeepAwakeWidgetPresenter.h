// SPDX-License-Identifier: MIT
// The keep-awake widget, ready for display.
#pragma once

#include "VesloraUI/KeepAwake/KeepAwakeModel.h"
#include "VesloraUI/Support/Presenter.h"

#include <QString>
#include <QVariantList>

namespace veslora {

/// A key that starts a session.
struct KeepAwakePreset {
    Q_GADGET
    QML_VALUE_TYPE(keepAwakePreset)
    Q_PROPERTY(QString label MEMBER label FINAL)
    Q_PROPERTY(QString helpText MEMBER helpText FINAL)
    /// Empty where the label is to be read.
    Q_PROPERTY(QString symbol MEMBER symbol FINAL)

  public:
    QString label;
    QString helpText;
    QString symbol;
};

class KeepAwakeWidgetPresenter : public veslora::Presenter {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(veslora::KeepAwakeModel* keepAwake MEMBER m_keepAwake REQUIRED FINAL)
    /// Seconds since 1970, from the view's timeline: everything is read again with each.
    Q_PROPERTY(double date MEMBER m_date WRITE setDate REQUIRED FINAL)
    Q_PROPERTY(QString timeText READ timeText NOTIFY changed FINAL)
    Q_PROPERTY(QString detail READ detail NOTIFY changed FINAL)
    /// Something keeps the machine awake.
    Q_PROPERTY(bool isLit READ isLit NOTIFY changed FINAL)
    /// A session of the user's runs; it has an end where `isTimed` holds, and none where `isIndefinite` does.
    Q_PROPERTY(bool isOn READ isOn NOTIFY changed FINAL)
    Q_PROPERTY(bool isTimed READ isTimed NOTIFY changed FINAL)
    Q_PROPERTY(bool isIndefinite READ isIndefinite NOTIFY changed FINAL)
    Q_PROPERTY(bool whileClaudeWorks READ whileClaudeWorks NOTIFY changed FINAL)
    Q_PROPERTY(QVariantList presets READ presets CONSTANT FINAL)

  public:
    using Presenter::Presenter;

    void setDate(double date);

    [[nodiscard]] QString timeText() const { return m_shown.timeText; }
    [[nodiscard]] QString detail() const { return m_shown.detail; }
    [[nodiscard]] bool isLit() const { return m_shown.isLit; }
    [[nodiscard]] bool isOn() const { return m_shown.isOn; }
    [[nodiscard]] bool isTimed() const { return m_shown.isTimed; }
    [[nodiscard]] bool isIndefinite() const { return m_shown.isIndefinite; }
    [[nodiscard]] bool whileClaudeWorks() const { return m_shown.whileClaudeWorks; }
    [[nodiscard]] static QVariantList presets();

    /// Starts the session of a preset, by its place among them; any other place does nothing.
    Q_INVOKABLE void startPreset(int preset);
    /// A tap under the finger tells that the time has really changed.
    Q_INVOKABLE void adjust(int steps);
    Q_INVOKABLE void stop();
    Q_INVOKABLE void toggleAgents();

  protected:
    void start() override;
    void read() override;

  private:
    struct Shown {
        QString timeText;
        QString detail;
        bool isLit = false;
        bool isOn = false;
        bool isTimed = false;
        bool isIndefinite = false;
        bool whileClaudeWorks = false;
        bool operator==(const Shown&) const = default;
    };
    [[nodiscard]] QString currentDetail() const;

    KeepAwakeModel* m_keepAwake = nullptr;
    double m_date = 0;
    Shown m_shown;
};

} // namespace veslora
