// SPDX-License-Identifier: MIT
#include "MediaAdapter/Artwork/ArtworkPicture.h"

#include <QBuffer>
#include <QImage>
#include <QImageReader>

namespace veslora::ArtworkPicture {
namespace {

/// Which decoder to ask, by the bytes alone: Qt would try all that are installed.
QByteArray formatOf(const QByteArray& bytes) {
    if (bytes.startsWith("\x89PNG\r\n\x1a\n")) {
        return "png";
    }
    if (bytes.startsWith("\xff\xd8\xff")) {
        return "jpeg";
    }
    if (bytes.startsWith("GIF87a") || bytes.startsWith("GIF89a")) {
        return "gif";
    }
    return bytes.startsWith("RIFF") && bytes.mid(8, 4) == "WEBP" ? "webp" : QByteArray();
}

bool isDecoded(const QSize& size) {
    return !size.isEmpty() && size.width() <= largestDecoded && size.height() <= largestDecoded;
}

QByteArray encoded(const QImage& image) {
    constexpr int quality = 90;
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    const bool isEncoded =
        image.hasAlphaChannel() ? image.save(&buffer, "PNG") : image.save(&buffer, "JPEG", quality);
    return isEncoded ? buffer.data() : QByteArray();
}

} // namespace

QByteArray shrunk(const QByteArray& bytes) {
    const QByteArray format = formatOf(bytes);
    if (format.isEmpty()) {
        return {};
    }
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer, format);
    reader.setAutoDetectImageFormat(false);
    reader.setAutoTransform(true);
    if (!isDecoded(reader.size())) {
        return {};
    }
    const QImage image = reader.read();
    if (image.isNull()) {
        return {};
    }
    if (image.width() <= largestMade && image.height() <= largestMade) {
        return encoded(image);
    }
    return encoded(image.scaled(largestMade, largestMade, Qt::KeepAspectRatio, Qt::SmoothTransformation));
}

} // namespace veslora::ArtworkPicture
