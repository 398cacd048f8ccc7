// SPDX-License-Identifier: MIT
// The language that the program speaks: the first of the user's that it has texts in, else English. Only that
// one is loaded. Main thread only.
#pragma once

#include "VesloraCore/Text/Words.h"

#include <QStringList>
#include <QTranslator>

namespace veslora {

class Translations {
  public:
    /// In the first of these languages that there are texts in; each as in "de" or "de-AT".
    explicit Translations(const QStringList& languages = ofUser());

    /// The user's languages, the best first, by LC_ALL, LC_MESSAGES and LANG, the first of them that is set,
    /// and LANGUAGE. As for other programs, LANGUAGE has no say where those ask for no language, "C".
    [[nodiscard]] static QStringList ofUser();

    /// Such as "de".
    [[nodiscard]] const QString& language() const { return m_language; }
    /// For texts that are made without an application object. They live no longer than this.
    [[nodiscard]] Words words() const;
    /// Has the application object, which must be there, speak the language, and lay out its windows in its
    /// direction. Comes before the first text is made.
    void install();

  private:
    QString m_language;
    QTranslator m_translator;
};

} // namespace veslora
