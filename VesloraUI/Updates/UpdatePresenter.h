// SPDX-License-Identifier: MIT
// What the window for updates says. Main thread only.
#pragma once

#include "VesloraUI/Support/Presenter.h"
#include "VesloraUI/Updates/AppcastUpdater.h"

#include <QString>

namespace veslora {

class UpdatePresenter : public veslora::Presenter {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(veslora::AppcastUpdater* updater MEMBER m_updater REQUIRED FINAL)
    Q_PROPERTY(QString headline READ headline NOTIFY changed FINAL)
    Q_PROPERTY(QString detail READ detail NOTIFY changed FINAL)
    /// Plain text of several lines; empty for none.
    Q_PROPERTY(QString notes READ notes NOTIFY changed FINAL)
    /// What the user may type into a terminal instead; empty for nothing.
    Q_PROPERTY(QString command READ command NOTIFY changed FINAL)
    Q_PROPERTY(bool isOffered READ isOffered NOTIFY changed FINAL)
    Q_PROPERTY(bool isDownloading READ isDownloading NOTIFY changed FINAL)
    /// 0 to 1, while it is downloading.
    Q_PROPERTY(qreal progress READ progress NOTIFY changed FINAL)
    /// What the key says that ends what the window shows.
    Q_PROPERTY(QString closing READ closing NOTIFY changed FINAL)

  public:
    using Presenter::Presenter;

    [[nodiscard]] const QString& headline() const { return m_shown.headline; }
    [[nodiscard]] const QString& detail() const { return m_shown.detail; }
    [[nodiscard]] const QString& notes() const { return m_shown.notes; }
    [[nodiscard]] const QString& command() const { return m_shown.command; }
    [[nodiscard]] bool isOffered() const { return m_shown.isOffered; }
    [[nodiscard]] bool isDownloading() const { return m_shown.isDownloading; }
    [[nodiscard]] qreal progress() const { return m_shown.progress; }
    [[nodiscard]] const QString& closing() const { return m_shown.closing; }

    Q_INVOKABLE void install();
    Q_INVOKABLE void skip();
    /// What the closing key does.
    Q_INVOKABLE void close();
    Q_INVOKABLE void copyCommand();

    /// Notes with nothing in them that hides, moves its neighbours or passes for something else; lines stay
    /// lines.
    [[nodiscard]] static QString harmless(const std::string& notes);

  protected:
    void start() override;
    void read() override;

  private:
    struct Shown {
        QString headline;
        QString detail;
        QString notes;
        QString command;
        QString closing;
        bool isOffered = false;
        bool isDownloading = false;
        qreal progress = 0;
        bool operator==(const Shown&) const = default;
    };

    [[nodiscard]] Shown shownOf(const AppcastUpdater::State& state) const;
    [[nodiscard]] QString installCommand() const;
    [[nodiscard]] static QString reason(UpdateFailure failure);
    [[nodiscard]] static QString reason(InstallOutcome outcome);

    AppcastUpdater* m_updater = nullptr;
    Shown m_shown;
};

} // namespace veslora
