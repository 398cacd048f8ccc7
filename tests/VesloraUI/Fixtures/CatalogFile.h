// SPDX-License-Identifier: MIT
// The texts of a language as the translators' file has them, to be looked up by what the program asks for.
#pragma once

#include <QFile>
#include <QSet>
#include <QString>
#include <QXmlStreamReader>

#include <gtest/gtest.h>

#include <utility>

namespace veslora {

class CatalogFile {
  public:
    using Key = std::pair<QString, QString>; ///< context and source text

    explicit CatalogFile(const QString& language) {
        QFile file(QStringLiteral(VESLORA_TEST_DATA "/../../translations/veslora_%1.ts").arg(language));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << file.fileName().toStdString();
        read(file);
    }
    [[nodiscard]] bool has(const QString& context, const QString& source) const {
        return m_keys.contains({context, source});
    }
    [[nodiscard]] qsizetype size() const { return m_keys.size(); }

  private:
    void read(QFile& file) {
        QXmlStreamReader reader(&file);
        QString context;
        while (!reader.atEnd()) {
            if (reader.readNext() != QXmlStreamReader::StartElement) {
                continue;
            }
            if (reader.name() == u"name") {
                context = reader.readElementText();
            } else if (reader.name() == u"source") {
                m_keys.insert({context, reader.readElementText()});
            }
        }
        EXPECT_FALSE(reader.hasError()) << reader.errorString().toStdString();
    }

    QSet<Key> m_keys;
};

} // namespace veslora
