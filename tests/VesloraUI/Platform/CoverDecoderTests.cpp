// SPDX-License-Identifier: MIT
#include "VesloraUI/Platform/CoverDecoder.h"
#include "tests/VesloraUI/Fixtures/Covers.h"

#include <gtest/gtest.h>

namespace veslora {
namespace {

using test::base64Of;
using test::cover;

QImage decodedFile(const QByteArray& file) {
    return CoverDecoder::decode(file.toBase64().toStdString());
}

/// While it lives, Qt may complain of broken pictures, and of nothing else.
class BrokenPictures {
  public:
    BrokenPictures() { former() = qInstallMessageHandler(&BrokenPictures::take); }
    BrokenPictures(const BrokenPictures&) = delete;
    BrokenPictures& operator=(const BrokenPictures&) = delete;
    ~BrokenPictures() { qInstallMessageHandler(former()); }

  private:
    static QtMessageHandler& former() {
        static QtMessageHandler handler = nullptr;
        return handler;
    }
    static void take(QtMsgType type, const QMessageLogContext& context, const QString& message) {
        if (!QByteArray(context.category).startsWith("qt.gui.imageio")) {
            former()(type, context, message);
        }
    }
};

TEST(CoverDecoder, DecodesPngAndJpeg) {
    EXPECT_EQ(CoverDecoder::decode(base64Of(cover(Qt::red))), cover(Qt::red));
    const QImage jpeg = CoverDecoder::decode(base64Of(cover(Qt::blue), "JPEG"));
    ASSERT_EQ(jpeg.size(), QSize(8, 8));
    EXPECT_EQ(jpeg.format(), QImage::Format_ARGB32_Premultiplied);
    EXPECT_GT(jpeg.pixelColor(4, 4).blue(), 250);
}

TEST(CoverDecoder, ScalesALargePictureDownAndKeepsItsShape) {
    EXPECT_EQ(CoverDecoder::decode(base64Of(cover(Qt::red, 256, 256))).size(), QSize(256, 256));
    EXPECT_EQ(CoverDecoder::decode(base64Of(cover(Qt::red, 1024, 512))).size(), QSize(256, 128));
    EXPECT_EQ(CoverDecoder::decode(base64Of(cover(Qt::red, 300, 600), "JPEG")).size(), QSize(128, 256));
    EXPECT_EQ(CoverDecoder::decode(base64Of(cover(Qt::red, 4096, 1))).size(), QSize(256, 1));
}

TEST(CoverDecoder, RefusesTooManyPixelsWithoutDecodingThem) {
    EXPECT_FALSE(CoverDecoder::decode(base64Of(cover(Qt::red, 4096, 4))).isNull());
    EXPECT_TRUE(CoverDecoder::decode(base64Of(cover(Qt::red, 4097, 4))).isNull());
    EXPECT_TRUE(CoverDecoder::decode(base64Of(cover(Qt::red, 4, 4097), "JPEG")).isNull());
}

TEST(CoverDecoder, RefusesWhatIsNoPictureOfACover) {
    const BrokenPictures complaints;
    const QByteArray vector = R"(<svg xmlns="http://www.w3.org/2000/svg" width="8" height="8"/>)";
    for (const QByteArray& file :
         {QByteArray(), QByteArray("music"), vector, "\xEF\xBB\xBF" + vector, QByteArray("\x89PNG\r\n\x1A\n"),
          QByteArray("\xFF\xD8\xFF"), QByteArray("\x89PNG\r\n\x1A\n") + vector}) {
        EXPECT_TRUE(decodedFile(file).isNull()) << file.constData();
    }
    EXPECT_TRUE(CoverDecoder::decode(base64Of(cover(Qt::red), "BMP")).isNull());
    EXPECT_TRUE(CoverDecoder::decode("no base64").isNull());
}

TEST(CoverDecoder, ACutFileDoesNoHarm) {
    const BrokenPictures complaints;
    for (const char* format : {"PNG", "JPEG"}) {
        const QByteArray file = QByteArray::fromBase64(base64Of(cover(Qt::red, 64, 64), format).c_str());
        for (qsizetype length = 0; length < file.size(); length += 7) {
            const QImage image = decodedFile(file.first(length));
            EXPECT_TRUE(image.isNull() || image.size() == QSize(64, 64)) << format << length;
        }
    }
}

TEST(CoverDecoder, RefusesTextOfMoreThanEightMegabytes) {
    // What follows the end of a picture is ignored, so that the length alone decides.
    QByteArray file = QByteArray::fromBase64(base64Of(cover(Qt::red)).c_str());
    file.resize(CoverDecoder::longestText / 4 * 3, '\0');
    EXPECT_FALSE(decodedFile(file).isNull());
    file.append("\0\0\0", 3);
    EXPECT_TRUE(decodedFile(file).isNull());
}

} // namespace
} // namespace veslora
