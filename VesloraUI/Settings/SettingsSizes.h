// SPDX-License-Identifier: MIT
// How large the texts of the settings window are, and by how much all that holds them grows with the
// desktop's size of text. In points.
#pragma once

#include <QObject>
#include <QQmlEngine>

namespace veslora {

class Appearance;

class SettingsSizes : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    /// From 1 to 2: smaller texts could not be read, larger ones would not fit on a screen.
    Q_PROPERTY(double scale READ scale NOTIFY changed FINAL)
    /// Of texts: a row's title, what a control says, and the details below a title.
    Q_PROPERTY(int title READ title NOTIFY changed FINAL)
    Q_PROPERTY(int control READ control NOTIFY changed FINAL)
    Q_PROPERTY(int detail READ detail NOTIFY changed FINAL)
    /// Height of a line of details.
    Q_PROPERTY(int detailLine READ detailLine NOTIFY changed FINAL)
    /// Height of a push button, and of a list's rows.
    Q_PROPERTY(int controlHeight READ controlHeight NOTIFY changed FINAL)

  public:
    explicit SettingsSizes(const Appearance& appearance);

    /// Called by the engine for the singleton. The engine must have been given its `ViewEnvironment`.
    static SettingsSizes* create(QQmlEngine* engine, QJSEngine* scriptEngine);

    [[nodiscard]] double scale() const;
    [[nodiscard]] int title() const { return scaled(13); }
    [[nodiscard]] int control() const { return scaled(12); }
    [[nodiscard]] int detail() const { return scaled(11); }
    [[nodiscard]] int detailLine() const { return scaled(15); }
    [[nodiscard]] int controlHeight() const { return scaled(26); }

  signals:
    void changed();

  private:
    [[nodiscard]] int scaled(int size) const;

    const Appearance& m_appearance;
};

} // namespace veslora
