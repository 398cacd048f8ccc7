// SPDX-License-Identifier: MIT
#include "UpdateFetcher/AppcastReader.h"

#include "VesloraCore/Updates/UpdateMessages.h"

#include <QXmlStreamReader>

namespace veslora::AppcastReader {

namespace {

const QString appcast = QStringLiteral("urn:veslora:appcast");

/// Cut where no pair of units is torn.
QString shortened(const QString& notes) {
    if (notes.size() <= longestNotes) {
        return notes;
    }
    const bool isTorn = notes.at(longestNotes - 1).isHighSurrogate();
    return notes.left(longestNotes - (isTorn ? 1 : 0)) + QChar(0x2026);
}

std::optional<AppcastItem> packageOf(const QXmlStreamAttributes& attributes) {
    const auto ours = [&attributes](const char* name) {
        return attributes.value(appcast, QLatin1String(name)).toString().toStdString();
    };
    const auto version = ReleaseVersion::parse(ours("version"));
    if (!version) {
        return std::nullopt;
    }
    AppcastItem item{.version = *version,
                     .url = attributes.value(QLatin1String("url")).toString().toStdString(),
                     .length = attributes.value(QLatin1String("length")).toLongLong(),
                     .signature = ours("signature"),
                     .kind = attributes.value(QLatin1String("type")).toString().toStdString(),
                     .architecture = ours("architecture")};
    return UpdateMessages::isSound(item) ? std::optional(item) : std::nullopt;
}

bool isPlain(const QXmlStreamReader& xml, const char* name) {
    return xml.namespaceUri().isEmpty() && xml.name() == QLatin1String(name);
}

/// Of one release, which may have several packages.
void readItem(QXmlStreamReader& xml, std::vector<AppcastItem>& items) {
    std::vector<AppcastItem> packages;
    QString notes;
    while (xml.readNextStartElement()) {
        if (isPlain(xml, "enclosure")) {
            if (const auto item = packageOf(xml.attributes())) {
                packages.push_back(*item);
            }
            xml.skipCurrentElement();
        } else if (isPlain(xml, "description")) {
            notes = xml.readElementText(QXmlStreamReader::SkipChildElements).trimmed();
        } else {
            xml.skipCurrentElement();
        }
    }
    for (AppcastItem& item : packages) {
        item.notes = shortened(notes).toStdString();
        items.push_back(std::move(item));
    }
}

void readChannel(QXmlStreamReader& xml, std::vector<AppcastItem>& items) {
    while (xml.readNextStartElement()) {
        if (isPlain(xml, "item") && items.size() < mostItems) {
            readItem(xml, items);
        } else {
            xml.skipCurrentElement();
        }
    }
}

/// To the root, past comments and the like.
bool readRoot(QXmlStreamReader& xml) {
    while (!xml.atEnd()) {
        const auto token = xml.readNext();
        if (token == QXmlStreamReader::DTD) {
            return false;
        }
        if (token == QXmlStreamReader::StartElement) {
            return isPlain(xml, "rss");
        }
    }
    return false;
}

} // namespace

std::optional<std::vector<AppcastItem>> read(const QByteArray& feed) {
    QXmlStreamReader xml(feed);
    if (!readRoot(xml)) {
        return std::nullopt;
    }
    std::vector<AppcastItem> items;
    while (xml.readNextStartElement()) {
        if (isPlain(xml, "channel")) {
            readChannel(xml, items);
        } else {
            xml.skipCurrentElement();
        }
    }
    // What follows the root must be well-formed too.
    while (!xml.atEnd()) {
        xml.readNext();
    }
    return xml.hasError() ? std::nullopt : std::optional(items);
}

} // namespace veslora::AppcastReader
