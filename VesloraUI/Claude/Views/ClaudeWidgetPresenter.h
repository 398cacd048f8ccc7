// SPDX-License-Identifier: MIT
// The agents widget, ready for display: its header and one row for each session.
#pragma once

#include "VesloraUI/Claude/Monitors/AgentsModel.h"
#include "VesloraUI/Claude/Views/ClaudeSessionRow.h"
#include "VesloraUI/Support/Presenter.h"
#include "VesloraUI/Support/RowModel.h"

#include <QString>

namespace veslora {

class VesloraStyle;

class ClaudeWidgetPresenter : public veslora::Presenter {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(veslora::AgentsModel* agents MEMBER m_agents REQUIRED FINAL)
    Q_PROPERTY(bool isWide MEMBER m_isWide REQUIRED FINAL)
    /// Seconds since 1970, from the view's timeline.
    Q_PROPERTY(double date MEMBER m_date WRITE setDate REQUIRED FINAL)
    Q_PROPERTY(QString title READ title NOTIFY changed FINAL)
    Q_PROPERTY(QString hooksNote READ hooksNote NOTIFY changed FINAL)
    Q_PROPERTY(QString workingText READ workingText NOTIFY changed FINAL)
    Q_PROPERTY(bool isEmpty READ isEmpty NOTIFY changed FINAL)
    Q_PROPERTY(QAbstractItemModel* rows READ rows CONSTANT FINAL)

  public:
    using Presenter::Presenter;

    void setDate(double date);

    /// "Agents" once another than Claude Code has anything to do with it; a user of that one alone sees its
    /// name.
    [[nodiscard]] QString title() const { return m_shown.title; }
    /// The warning that no approvals come; empty where some agent has our hooks.
    [[nodiscard]] QString hooksNote() const { return m_shown.hooksNote; }
    /// How many sessions work; empty where none does, and on a small widget.
    [[nodiscard]] QString workingText() const { return m_shown.workingText; }
    [[nodiscard]] bool isEmpty() const { return m_shown.isEmpty; }
    [[nodiscard]] QAbstractItemModel* rows() { return &m_rows; }

    Q_INVOKABLE void jump(const QString& sessionId);

  protected:
    void start() override;
    void read() override;

  private:
    struct Shown {
        QString title;
        QString hooksNote;
        QString workingText;
        bool isEmpty = true;
        bool operator==(const Shown&) const = default;
    };
    void readRows();
    [[nodiscard]] ClaudeSessionRow rowOf(const ClaudeSessionSummary& session, bool showsMarks) const;
    [[nodiscard]] QString titleNow() const;
    [[nodiscard]] QString hooksNoteNow() const;
    [[nodiscard]] QString workingTextNow() const;

    AgentsModel* m_agents = nullptr;
    bool m_isWide = false;
    double m_date = 0;
    VesloraStyle* m_style = nullptr;
    Shown m_shown;
    RowModel<ClaudeSessionRow> m_rows{"session"};
};

} // namespace veslora
