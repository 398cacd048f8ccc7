// SPDX-License-Identifier: MIT
#include "VesloraCore/Text/Scalars.h"
#include "tests/VesloraUI/Text/ProofOf.h"

#include <gtest/gtest.h>

namespace veslora {

using test::proofOfSpelled;

namespace {

QString many(const char* piece, int times) {
    return QString(piece).repeated(times);
}

/// The last unit up to which the text is within the bounds.
int boundOf(const QString& text) {
    const auto clusters = TextClusters::bounded(text);
    return clusters.isEmpty() ? 0 : clusters.back().from + clusters.back().length;
}

} // namespace

TEST(TextClusters, EndAtFourHundredUnits) {
    EXPECT_EQ(boundOf(many("i", 400)), 400);
    EXPECT_EQ(boundOf(many("i", 401)), 400);
    EXPECT_EQ(boundOf(many("👍🏽", 130)), 400);
    EXPECT_EQ(boundOf("a" + many("😀", 200)), 399) << "no half of a pair";
    EXPECT_EQ(boundOf(many("i", 8'000'000)), 400);
    EXPECT_EQ(boundOf(""), 0);
}

TEST(TextClusters, EndAtFiveCodePointsInOne) {
    EXPECT_EQ(boundOf(many("\u1100", 4) + "a"), 5);
    EXPECT_EQ(boundOf("a" + many("\u1100", 5)), 1);
    EXPECT_EQ(boundOf("a👍" + many("🏽", 4)), 1);
}

TEST(TextClusters, EndAtTheFifthScript) {
    EXPECT_EQ(boundOf("a б γ ა 1 😀 a"), 14);
    EXPECT_EQ(boundOf("a б γ ა ա"), 8);
}

TEST(TextClusters, EndAtWhatIsNeverShownAsItself) {
    EXPECT_EQ(boundOf("ab\u20DDc"), 1) << "a mark is of its letter";
    for (const char* hidden : {"\u202E", "\uFFFC", "\u0378", "\uE000", "\u115F", "\n"}) {
        EXPECT_EQ(boundOf("ab" + QString(hidden) + "c"), 2) << hidden;
    }
}

TEST(TextClusters, TakeASpacingMarkToItsLetter) {
    const auto burmese = TextClusters::bounded("တာ");
    ASSERT_EQ(burmese.size(), 1);
    EXPECT_EQ(burmese.front(), (TextCluster{0, 2, 2}));
}

/// What Core lets through is what the toolkit's own, older tables know, and nothing that they would hide.
TEST(TextClusters, CoreLeavesNothingThatTheToolkitHides) {
    for (char32_t scalar = 0; scalar <= QChar::LastValidCodePoint; ++scalar) {
        if (Scalars::isHidden(scalar)) {
            continue;
        }
        ASSERT_NE(QChar::unicodeVersion(scalar), QChar::Unicode_Unassigned) << uint(scalar);
        const auto category = QChar::category(scalar);
        ASSERT_TRUE(scalar == ' ' ||
                    (category != QChar::Separator_Space && category != QChar::Other_Format &&
                     category != QChar::Other_Control && category != QChar::Mark_Enclosing &&
                     category != QChar::Other_PrivateUse && category != QChar::Other_Surrogate &&
                     category != QChar::Separator_Line && category != QChar::Separator_Paragraph &&
                     category != QChar::Other_NotAssigned))
            << uint(scalar);
    }
}

TEST(TextProof, OfAnOrdinaryCommandIsGood) {
    for (const double ratio : {1.0, 1.25, 1.5, 2.0, 3.0}) {
        const TextProof proof = proofOfSpelled("npm run build -- --mode production", ratio);
        EXPECT_TRUE(proof.isGood) << ratio << ", fault " << int(proof.fault);
        EXPECT_EQ(proof.text, "npm run build -- --mode production");
    }
}

TEST(TextProof, OfEveryAsciiCharacterIsGood) {
    QString all;
    for (char c = '!'; c <= '~'; ++c) {
        all += QLatin1Char(c);
    }
    EXPECT_TRUE(proofOfSpelled(all).isGood);
}

TEST(TextProof, OfNothingIsNone) {
    EXPECT_EQ(proofOfSpelled("").fault, TextFault::blank);
    EXPECT_FALSE(proofOfSpelled("   ").isGood);
}

TEST(TextProof, SpellsALetterThatNoFontHas) {
    const TextProof proof = proofOfSpelled("cat \U00010000.txt");
    EXPECT_TRUE(proof.isGood);
    EXPECT_EQ(proof.text, "cat ⟨U+10000⟩.txt");
    const TextProof hindi = proofOfSpelled("cat मे");
    EXPECT_EQ(hindi.text, "cat ⟨U+092E⟩⟨U+0947⟩");
}

TEST(TextProof, RefusesWhatIsTooLongOnceItIsSpelled) {
    const TextProof proof = proofOfSpelled(many("桌", 40));
    EXPECT_FALSE(proof.isGood);
    EXPECT_TRUE(proof.text.startsWith("⟨U+684C⟩⟨U+684C⟩"));
    EXPECT_TRUE(proof.text.endsWith("…"));
}

TEST(TextProof, EndsAtTheThirdLine) {
    const TextProof proof = proofOfSpelled(many("W", 130));
    EXPECT_FALSE(proof.isGood);
    EXPECT_TRUE(proof.text.endsWith("WW…"));
    EXPECT_TRUE(proof.lines.isWhole());
    EXPECT_GT(proof.text.size(), 70);
}

TEST(TextProof, KeepsLettersApartThatAFontWouldJoin) {
    EXPECT_TRUE(proofOfSpelled("a -> b => c fi ffl لا").isGood);
}

TEST(TextProof, RefusesBlanksOfAnyKindThatSlippedThrough) {
    for (const char* blank : {"\u2003", "\u3164", "\u2800", "\uFFFC", "\u034F"}) {
        EXPECT_FALSE(proofOfSpelled("rm" + QString(blank) + "x").isGood) << blank;
    }
}

TEST(TextProof, RefusesMarksThatFallOntoEachOther) {
    EXPECT_TRUE(proofOfSpelled("e\u0302\u0301").isGood);
    EXPECT_FALSE(proofOfSpelled("e\u0301\u0301\u0301").isGood);
}

TEST(TextProof, AViewWithoutRoomProvesNothing) {
    EXPECT_FALSE(proofOf("ls", test::alertFont(), {.width = 3}, 1).isGood);
    EXPECT_FALSE(proofOf("ls -la", test::alertFont(), {.width = 40, .lines = 0}, 1).isGood);
}

} // namespace veslora
