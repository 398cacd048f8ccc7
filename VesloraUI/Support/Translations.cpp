// SPDX-License-Identifier: MIT
#include "VesloraUI/Support/Translations.h"

#include <QFile>
#include <QGuiApplication>
#include <QLocale>

#include <initializer_list>

namespace veslora {

namespace {

const QString english = QStringLiteral("en");

QString fileOf(const QString& language) {
    return QStringLiteral(":/translations/veslora_%1.qm").arg(language);
}

/// The variable that decides, without what follows the language and the territory.
QString localeOfMessages() {
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const QString value = qEnvironmentVariable(name);
        if (!value.isEmpty()) {
            return value.section(u'.', 0, 0).section(u'@', 0, 0);
        }
    }
    return QStringLiteral("C");
}

QString firstWithTexts(const QStringList& languages) {
    for (const QString& language : languages) {
        const QString territorial = QString(language).replace(u'-', u'_');
        for (const QString& name : {territorial, territorial.section(u'_', 0, 0)}) {
            if (QFile::exists(fileOf(name))) {
                return name;
            }
        }
    }
    return english;
}

} // namespace

Translations::Translations(const QStringList& languages) : m_language(firstWithTexts(languages)) {
    [[maybe_unused]] const bool isLoaded = m_translator.load(fileOf(m_language));
    Q_ASSERT(isLoaded);
}

QStringList Translations::ofUser() {
    const QString locale = localeOfMessages();
    const bool isLanguage = locale != QStringLiteral("C") && locale != QStringLiteral("POSIX");
    return isLanguage ? QLocale::system().uiLanguages() : QStringList{english};
}

Words Translations::words() const {
    return Words([this](const char* context, const char* text) {
        const QString translated = m_translator.translate(context, text);
        return translated.isEmpty() ? std::string(text) : translated.toStdString();
    });
}

void Translations::install() {
    QCoreApplication::installTranslator(&m_translator);
    if (qobject_cast<QGuiApplication*>(QCoreApplication::instance()) != nullptr) {
        QGuiApplication::setLayoutDirection(QLocale(m_language).textDirection());
    }
}

} // namespace veslora
