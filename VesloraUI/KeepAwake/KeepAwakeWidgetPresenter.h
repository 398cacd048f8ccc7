// SPDX-License-Identifier: MIT
// The keep-awake widget, ready for display.
#pragma once

#include "VesloraUI/KeepAwake/KeepAwakeModel.h"

#include <QObject>
#include <QQmlEngine>
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

class KeepAwakeWidgetPresenter : public QObject, public QQmlParserStatus {
    Q_OBJECT
    QML_ELEMENT
    Q_INTERFACES(QQmlParserStatus)
    Q_PROPERTY(veslora::KeepAwakeModel* keepAwake MEMBER m_keepAwake REQUIRED FINAL)
    /// Seconds since 1970, from the view's timeline: everything is read anew with each.
    Q_PROPERTY(double date MEMBER m_date WRITE setDate REQUIRED FINAL)
    Q_PROPERTY(QString timeText READ timeText NOTIFY timeTextChanged FINAL)
    Q_PROPERTY(QString detail READ detail NOTIFY detailChanged FINAL)
    /// Something keeps the machine awake.
    Q_PROPERTY(bool isLit READ isLit NOTIFY sessionChanged FINAL)
    /// A session of the user's runs; it has an end where `isTimed` holds, and none where `isIndefinite` does.
    Q_PROPERTY(bool isOn READ isOn NOTIFY sessionChanged FINAL)
    Q_PROPERTY(bool isTimed READ isTimed NOTIFY sessionChanged FINAL)
    Q_PROPERTY(bool isIndefinite READ isIndefinite NOTIFY sessionChanged FINAL)
    Q_PROPERTY(bool whileClaudeWorks READ whileClaudeWorks NOTIFY sessionChanged FINAL)
    Q_PROPERTY(QVariantList presets READ presets CONSTANT FINAL)

  public:
    using QObject::QObject;

    void classBegin() override {}
    void componentComplete() override;

    void setDate(double date);

    [[nodiscard]] QString timeText() const { return m_timeText; }
    [[nodiscard]] QString detail() const { return m_detail; }
    [[nodiscard]] bool isLit() const { return m_session.isLit; }
    [[nodiscard]] bool isOn() const { return m_session.isOn; }
    [[nodiscard]] bool isTimed() const { return m_session.isTimed; }
    [[nodiscard]] bool isIndefinite() const { return m_session.isIndefinite; }
    [[nodiscard]] bool whileClaudeWorks() const { return m_session.whileClaudeWorks; }
    [[nodiscard]] static QVariantList presets();

    /// Starts the session of a preset, by its place among them; any other place does nothing.
    Q_INVOKABLE void start(int preset);
    /// A tap under the finger tells that the time has really changed.
    Q_INVOKABLE void adjust(int steps);
    Q_INVOKABLE void stop();
    Q_INVOKABLE void toggleAgents();

  signals:
    void timeTextChanged();
    void detailChanged();
    void sessionChanged();

  private:
    struct Session {
        bool isLit = false;
        bool isOn = false;
        bool isTimed = false;
        bool isIndefinite = false;
        bool whileClaudeWorks = false;
        bool operator==(const Session&) const = default;
    };
    void read();
    [[nodiscard]] QString currentDetail() const;

    KeepAwakeModel* m_keepAwake = nullptr;
    double m_date = 0;
    bool m_isComplete = false;
    Session m_session;
    QString m_timeText;
    QString m_detail;
};

} // namespace veslora
