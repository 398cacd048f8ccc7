// SPDX-License-Identifier: MIT
// Covers for tests of the music.
#pragma once

#include <QBuffer>
#include <QImage>

#include <string>

namespace veslora::test {

inline QImage cover(const QColor& color, int width = 8, int height = 8) {
    QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
    image.fill(color);
    return image;
}

/// The image's file in a format such as "PNG", as base64.
inline std::string base64Of(const QImage& image, const char* format = "PNG") {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format);
    return bytes.toBase64().toStdString();
}

} // namespace veslora::test
