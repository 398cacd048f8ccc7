// SPDX-License-Identifier: MIT
// All that a user can read in a window, or hear of it.
#pragma once

#include "VesloraUI/Support/LocalTime.h"
#include "tests/VesloraUI/Fixtures/PseudoTexts.h"
#include "tests/VesloraUI/Fixtures/Scene.h"

#include <QAccessible>

#include <gtest/gtest.h>

#include <string>

namespace veslora {

class SpokenTexts {
  public:
    explicit SpokenTexts(const Scene& scene) : m_all(scene.texts()) {
        collect(QAccessible::queryAccessibleInterface(&scene.window()));
        m_all.removeAll(QString());
        m_all.removeDuplicates();
    }

    [[nodiscard]] const QStringList& all() const { return m_all; }

    /// That each of them is translated but for what has a reason not to be: names of makers, and dates, which
    /// are the locale's. What agents and players say is in Greek letters in these tests, as our own texts
    /// never are.
    void expectTranslated(const std::string& when) const {
        static const QRegularExpression latin(QStringLiteral("[A-Za-zÀ-ɏ]"));
        for (const QString& text : m_all) {
            QString rest = PseudoTexts::untranslated(text);
            for (const QString& word : untranslatable()) {
                rest.remove(word);
            }
            EXPECT_FALSE(rest.contains(latin)) << when << ": " << text.toStdString();
        }
    }

  private:
    void collect(QAccessibleInterface* node) {
        if (!node || node->state().invisible) {
            return;
        }
        m_all << node->text(QAccessible::Name) << node->text(QAccessible::Description);
        for (int i = 0; i < node->childCount(); ++i) {
            collect(node->child(i));
        }
    }
    [[nodiscard]] static QStringList untranslatable() {
        QStringList words{"Claude Code", "Claude", "Codex", "Spotify", "GB"};
        const QLocale locale;
        for (int day = 1; day <= 7; ++day) {
            words << locale.dayName(day, QLocale::ShortFormat);
        }
        for (int month = 1; month <= 12; ++month) {
            words << locale.monthName(month, QLocale::ShortFormat);
        }
        return words << locale.amText() << locale.pmText();
    }

    QStringList m_all;
};

} // namespace veslora
