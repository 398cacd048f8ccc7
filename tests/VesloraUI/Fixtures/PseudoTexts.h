// SPDX-License-Identifier: MIT
// While it lives, the views speak a language that nobody speaks: every text stands between brackets, in
// letters with accents, half as long again. What shows without brackets never was translated. It notes what
// it was asked for.
#pragma once

#include "tests/VesloraUI/Fixtures/CatalogFile.h"

#include <QGuiApplication>
#include <QRegularExpression>
#include <QSet>
#include <QTranslator>

namespace veslora {

class PseudoTexts : public QTranslator {
  public:
    /// Written from the right, each text begins with a mark that says so.
    explicit PseudoTexts(Qt::LayoutDirection direction = Qt::LeftToRight) : m_direction(direction) {
        QCoreApplication::installTranslator(this);
        QGuiApplication::setLayoutDirection(direction);
    }
    PseudoTexts(const PseudoTexts&) = delete;
    PseudoTexts& operator=(const PseudoTexts&) = delete;
    ~PseudoTexts() override {
        QGuiApplication::setLayoutDirection(Qt::LeftToRight);
        QCoreApplication::removeTranslator(this);
    }

    [[nodiscard]] bool isEmpty() const override { return false; }
    [[nodiscard]] QString translate(const char* context, const char* source, const char* /*comment*/,
                                    int /*n*/) const override {
        // The toolkit's own contexts; ours begin with another letter.
        if (context == nullptr || *context == 'Q') {
            return {};
        }
        m_asked.insert({QString::fromUtf8(context), QString::fromUtf8(source)});
        return inPseudo(QString::fromUtf8(source));
    }
    [[nodiscard]] const QSet<CatalogFile::Key>& asked() const { return m_asked; }

    [[nodiscard]] QString inPseudo(const QString& text) const {
        constexpr int share = 2;
        const QString mark = m_direction == Qt::RightToLeft ? QString(QChar(0x200f)) : QString();
        const QString padding((text.size() + share - 1) / share, QChar(u'·'));
        return mark + QLatin1Char('[') + withAccents(text) + padding + QLatin1Char(']');
    }

    /// What is left of a text without everything that was translated.
    [[nodiscard]] static QString untranslated(QString text) {
        static const QRegularExpression innermost(QStringLiteral("\\[[^\\[\\]]*\\]"));
        qsizetype before = -1;
        while (text.size() != before) {
            before = text.size();
            text.remove(innermost);
        }
        return text.remove(QChar(0x200f));
    }

  private:
    [[nodiscard]] static QString withAccents(const QString& text) {
        static const QString plain = QStringLiteral("aceinouyACEINOUY");
        static const QString accented = QStringLiteral("áçéíñóúýÁÇÉÍÑÓÚÝ");
        // A place for a value stays what it is.
        static const QRegularExpression place(QStringLiteral("%L?[0-9n]"));
        QString result;
        qsizetype end = 0;
        const auto addLetters = [&](qsizetype until) {
            for (; end < until; ++end) {
                const qsizetype at = plain.indexOf(text[end]);
                result += at < 0 ? text[end] : accented[at];
            }
        };
        for (auto places = place.globalMatch(text); places.hasNext();) {
            const auto found = places.next();
            addLetters(found.capturedStart());
            result += found.captured();
            end = found.capturedEnd();
        }
        addLetters(text.size());
        return result;
    }

    Qt::LayoutDirection m_direction;
    mutable QSet<CatalogFile::Key> m_asked;
};

} // namespace veslora
