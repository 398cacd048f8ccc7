// SPDX-License-Identifier: MIT
#include "MediaAdapter/Artwork/ArtworkPicture.h"

#include <QBuffer>
#include <QImage>

#include <gtest/gtest.h>

namespace veslora {
namespace {

QByteArray bytesOf(const QImage& image, const char* format) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    EXPECT_TRUE(image.save(&buffer, format));
    return buffer.data();
}

QImage filled(int width, int height, QImage::Format format = QImage::Format_RGB32) {
    QImage image(width, height, format);
    image.fill(QColor(200, 100, 50, format == QImage::Format_ARGB32 ? 128 : 255));
    return image;
}

/// The checksum at the end of each part of a PNG.
quint32 checksum(const QByteArray& bytes) {
    quint32 sum = ~0U;
    for (const char byte : bytes) {
        sum ^= static_cast<quint8>(byte);
        for (int bit = 0; bit < 8; ++bit) {
            sum = (sum >> 1) ^ ((sum & 1) != 0 ? 0xEDB88320U : 0);
        }
    }
    return ~sum;
}

/// A PNG that says it has that size and holds a single pixel.
QByteArray emptyPng(quint32 width, quint32 height) {
    QByteArray bytes = bytesOf(filled(1, 1), "PNG");
    const auto put = [&bytes](qsizetype at, quint32 value) {
        for (int shift = 24; shift >= 0; shift -= 8) {
            bytes[at++] = static_cast<char>(value >> shift);
        }
    };
    put(16, width);
    put(20, height);
    put(29, checksum(bytes.sliced(12, 17)));
    return bytes;
}

TEST(ArtworkPictureTests, MakesALargePictureSmallAndKeepsItsForm) {
    const QImage image = QImage::fromData(ArtworkPicture::shrunk(bytesOf(filled(1000, 500), "PNG")));
    EXPECT_EQ(image.size(), QSize(256, 128));
    EXPECT_NEAR(image.pixelColor(10, 10).red(), 200, 4);
}

TEST(ArtworkPictureTests, LeavesASmallPictureItsSize) {
    EXPECT_EQ(QImage::fromData(ArtworkPicture::shrunk(bytesOf(filled(20, 30), "JPEG"))).size(),
              QSize(20, 30));
}

TEST(ArtworkPictureTests, KeepsWhatCanBeSeenThrough) {
    const QByteArray made = ArtworkPicture::shrunk(bytesOf(filled(300, 300, QImage::Format_ARGB32), "PNG"));
    EXPECT_TRUE(made.startsWith("\x89PNG"));
    EXPECT_NEAR(QImage::fromData(made).pixelColor(5, 5).alpha(), 128, 1);
}

TEST(ArtworkPictureTests, ReadsTheFirstPictureOfAGif) {
    const QByteArray gif =
        QByteArray::fromBase64("R0lGODlhAQABAIAAAP///wAAACH5BAAAAAAALAAAAAABAAEAAAICRAEAOw==");
    EXPECT_EQ(QImage::fromData(ArtworkPicture::shrunk(gif)).size(), QSize(1, 1));
}

TEST(ArtworkPictureTests, DecodesNothingThatIsTooLarge) {
    const QByteArray wide = bytesOf(filled(4096, 1), "PNG");
    EXPECT_FALSE(ArtworkPicture::shrunk(wide).isEmpty());
    EXPECT_TRUE(ArtworkPicture::shrunk(bytesOf(filled(4097, 1), "PNG")).isEmpty());
    ASSERT_FALSE(ArtworkPicture::shrunk(emptyPng(1, 1)).isEmpty());
    EXPECT_TRUE(ArtworkPicture::shrunk(emptyPng(60000, 60000)).isEmpty());
    EXPECT_TRUE(ArtworkPicture::shrunk(emptyPng(0, 5)).isEmpty());
}

TEST(ArtworkPictureTests, RefusesWhatIsBrokenOrOfAnotherKind) {
    EXPECT_TRUE(ArtworkPicture::shrunk("").isEmpty());
    EXPECT_TRUE(
        ArtworkPicture::shrunk("<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'/>").isEmpty());
    EXPECT_TRUE(ArtworkPicture::shrunk(bytesOf(filled(9, 9), "BMP")).isEmpty());
    EXPECT_TRUE(ArtworkPicture::shrunk(bytesOf(filled(9, 9), "PNG").first(40)).isEmpty());
}

} // namespace
} // namespace veslora
