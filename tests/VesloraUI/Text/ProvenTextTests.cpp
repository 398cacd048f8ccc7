// SPDX-License-Identifier: MIT
// The item that shows a request's text: when it judges, and whether what it calls proven can really be seen.
// The latter is judged here by pictures of the item alone, without a look at layouts, glyphs or fonts.
#include "VesloraCore/Text/GraphemeClusters.h"
#include "VesloraCore/Text/JsonText.h"
#include "VesloraCore/Text/Scalars.h"
#include "VesloraUI/Text/ProvenText.h"
#include "tests/VesloraUI/Text/ProofOf.h"

#include <QGuiApplication>
#include <QPainter>
#include <QQuickWindow>
#include <QSignalSpy>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <memory>
#include <random>

namespace veslora {
namespace {

class ProvenTextTest : public testing::Test {
  protected:
    ProvenTextTest() {
        window.setColor(Qt::black);
        // No pixel more than the box and what accents may rise above it: ink elsewhere does not count.
        window.resize(test::alertWidth, height);
        item->setParentItem(window.contentItem());
        item->setPosition({0, TextJudge::slack});
        item->setWidth(test::alertWidth);
        item->setFont(test::alertFont());
        item->setColor(Qt::white);
        window.show();
    }
    QImage picture(const std::string& text) {
        item->setText(QString::fromStdString(text));
        return window.grabWindow();
    }

    static constexpr int height = 28 + 2 * static_cast<int>(TextJudge::slack);
    QQuickWindow window;
    std::unique_ptr<ProvenText> item = std::make_unique<ProvenText>();
};

int inkOf(const QImage& picture) {
    int sum = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const QRgb pixel = picture.pixel(x, y);
            sum += std::max({qRed(pixel), qGreen(pixel), qBlue(pixel)});
        }
    }
    return sum;
}

int differenceOf(const QImage& one, const QImage& other) {
    int sum = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            const QRgb a = one.pixel(x, y);
            const QRgb b = other.pixel(x, y);
            sum += std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                             std::abs(qBlue(a) - qBlue(b))});
        }
    }
    return sum;
}

/// Strings of which every part was chosen among code points of all kinds, among marks, and among what attacks
/// used.
class RandomTexts {
  public:
    std::string next() {
        std::string text = "a";
        const int pieces = number(1, 5);
        for (int i = 0; i < pieces; ++i) {
            const char32_t scalar = anyScalar();
            const int times = number(0, 9) == 0 ? number(2, 60) : 1;
            for (int j = 0; j < times; ++j) {
                JsonText::appendUtf8(text, scalar);
            }
            if (number(0, 3) == 0) {
                text += "b ";
            }
        }
        return text + "z";
    }

  private:
    int number(int least, int most) { return std::uniform_int_distribution(least, most)(m_random); }
    char32_t scalarOf(char32_t least, char32_t most) {
        return std::uniform_int_distribution<char32_t>(least, most)(m_random);
    }
    char32_t anyScalar() {
        switch (number(0, 9)) {
        case 0:
            return scalarOf(0x300, 0x36F); // marks
        case 1:
            return scalarOf(0x590, 0x6FF); // Hebrew, Arabic, and their marks
        case 2:
            return scalarOf(0x900, 0x1FFF); // scripts whose letters depend on each other
        case 3:
            return scalarOf(0x2000, 0x2BFF); // blanks, formats, symbols
        case 4:
            return scalarOf(0x2C00, 0xD7FF);
        case 5:
            return scalarOf(0xF900, 0xFFFF); // presentation forms, selectors, fillers, specials
        case 6:
            return scalarOf(0x1D000, 0x1FFFF); // musical and mathematical signs, emoji
        case 7:
            return scalarOf(0xA0, 0x2FF);
        case 8:
            return scalarOf(0x370, 0x58F);
        default:
            const char32_t any = scalarOf(1, 0x10FFFF);
            return any >= 0xD800 && any <= 0xDFFF ? 0xFFFC : any;
        }
    }

    std::mt19937 m_random{20'26};
};

/// Ours, which are known to be seen, and blanks, which need no ink.
bool isPlain(std::string_view character) {
    return character.size() == 1 || character == "⟨" || character == "⟩";
}

} // namespace

TEST_F(ProvenTextTest, ProvesNothingWithoutAWindow) {
    ProvenText lonely;
    lonely.setWidth(test::alertWidth);
    lonely.setText("ls");
    lonely.ensurePolished();
    EXPECT_FALSE(lonely.isProven());
}

TEST_F(ProvenTextTest, IsProvenByTheFirstFrame) {
    EXPECT_FALSE(item->isProven());
    static_cast<void>(picture("ls"));
    EXPECT_TRUE(item->isProven());
    EXPECT_EQ(item->shownText(), "ls");
}

TEST_F(ProvenTextTest, WhatWasProvenIsNotOnceTheTextIsAnother) {
    static_cast<void>(picture("ls"));
    item->setText("rm");
    EXPECT_FALSE(item->isProven());
    static_cast<void>(picture("rm"));
    EXPECT_TRUE(item->isProven());
    item->setWidth(3);
    EXPECT_FALSE(item->isProven());
    window.grabWindow();
    EXPECT_FALSE(item->isProven());
}

TEST_F(ProvenTextTest, JudgesOnceForEachText) {
    static_cast<void>(picture("ls"));
    QSignalSpy proofs(item.get(), &ProvenText::proofChanged);
    for (int frame = 0; frame < 5; ++frame) {
        static_cast<void>(picture("ls"));
        item->setPosition({0, TextJudge::slack + frame});
    }
    EXPECT_EQ(proofs.size(), 0);
}

TEST_F(ProvenTextTest, FontsThatComeOrGoAreJudgedAgain) {
    static_cast<void>(picture("ls"));
    emit qGuiApp->fontDatabaseChanged();
    EXPECT_FALSE(item->isProven());
    static_cast<void>(picture("ls"));
    EXPECT_TRUE(item->isProven());
}

TEST_F(ProvenTextTest, DrawsThePixelsThatWereJudged) {
    const QImage drawn = picture("git log --oneline");
    QImage judged(drawn.size(), QImage::Format_RGB32);
    judged.fill(Qt::black);
    QPainter painter(&judged);
    painter.setPen(Qt::white);
    painter.translate(0, TextJudge::slack);
    test::proofOfSpelled("git log --oneline").lines.paint(painter);
    painter.end();
    // The same glyphs at the same places; only how edges blend with black may differ.
    for (int y = 0; y < drawn.height(); ++y) {
        for (int x = 0; x < drawn.width(); ++x) {
            ASSERT_EQ(qGray(drawn.pixel(x, y)) > 0, qGray(judged.pixel(x, y)) > 0) << x << "," << y;
        }
    }
}

TEST_F(ProvenTextTest, AllThatIsProvenOfRandomTextsCanBeSeen) {
    constexpr int rounds = 2000;
    constexpr int leastInk = 60;
    RandomTexts texts;
    int proven = 0;
    int looked = 0;
    for (int round = 0; round < rounds; ++round) {
        const auto display = ClaudeRequestText::display(texts.next());
        static_cast<void>(picture(display.text));
        if (!display.isComplete || !item->isProven()) {
            continue;
        }
        ++proven;
        const std::string shown = item->shownText().toStdString();
        for (std::size_t from = 0, length = 0; from < shown.size(); from += length) {
            const std::string_view character =
                GraphemeClusters::prefix(std::string_view(shown).substr(from), 1);
            length = character.size();
            if (isPlain(character)) {
                continue;
            }
            // The picture must change with each code point, and gain ink by each that is no mark.
            for (std::size_t at = 0; at < length;) {
                const auto scalar = Scalars::at(character, at);
                const QImage before = picture(shown.substr(0, from + at));
                const QImage after = picture(shown.substr(0, from + at + scalar.length));
                const int change = at == 0 ? inkOf(after) - inkOf(before) : differenceOf(after, before);
                EXPECT_GE(change, leastInk) << "U+" << std::hex << uint(*scalar.codePoint) << " in " << shown;
                at += scalar.length;
                ++looked;
            }
        }
    }
    EXPECT_GT(proven, rounds / 4) << "or nothing was tried";
    EXPECT_GT(looked, rounds / 4);
}

} // namespace veslora
