// SPDX-License-Identifier: MIT
#include "VesloraUI/Platform/CoverDecoder.h"

#include "VesloraCore/Text/Base64.h"

#include <QBuffer>
#include <QImageReader>

#include <algorithm>

namespace veslora::CoverDecoder {

namespace {

/// By the first bytes; empty for any other file.
QByteArray formatOf(std::string_view file) {
    if (file.starts_with("\x89PNG\r\n\x1A\n")) {
        return QByteArrayLiteral("png");
    }
    return file.starts_with("\xFF\xD8\xFF") ? QByteArrayLiteral("jpeg") : QByteArray();
}

bool isWithinLimits(const QSize& size) {
    return !size.isEmpty() && std::max(size.width(), size.height()) <= largestSide;
}

QImage read(QImageReader& reader) {
    const QSize size = reader.size();
    if (!isWithinLimits(size)) {
        return {};
    }
    if (std::max(size.width(), size.height()) > side) {
        reader.setScaledSize(size.scaled(side, side, Qt::KeepAspectRatio).expandedTo({1, 1}));
    }
    return reader.read().convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

} // namespace

QImage decode(std::string_view base64) {
    const auto file = base64.size() <= longestText ? Base64::decode(base64) : std::nullopt;
    const QByteArray format = file ? formatOf(*file) : QByteArray();
    if (format.isEmpty()) {
        return {};
    }
    QByteArray bytes = QByteArray::fromRawData(file->data(), static_cast<qsizetype>(file->size()));
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer, format);
    // Or else a decoder that nobody meant, such as that of vector images, would be asked too.
    reader.setAutoDetectImageFormat(false);
    return read(reader);
}

} // namespace veslora::CoverDecoder
