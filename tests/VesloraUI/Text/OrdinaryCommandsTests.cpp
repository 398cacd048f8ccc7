// SPDX-License-Identifier: MIT
// What people really run must not be refused, in whatever language they name their files.
#include "tests/VesloraUI/Text/Commands.h"
#include "tests/VesloraUI/Text/ProofOf.h"

#include <QFontDatabase>

#include <gtest/gtest.h>

namespace veslora {
namespace {

QString spelled(const std::string& text) {
    return QString::fromStdString(ClaudeRequestText::display(text).text);
}

constexpr std::array ratios{1.0, 1.25, 2.0};

} // namespace

TEST(OrdinaryCommands, AreShownAsTheyAreWithTheFontsOfTheSetup) {
    for (const test::Command& command : test::commands()) {
        for (const double ratio : ratios) {
            const TextProof proof = test::proofOfRequest(command.text, ratio);
            if (!command.needsNoto) {
                EXPECT_TRUE(proof.isGood)
                    << command.name << " at " << ratio << ", fault " << int(proof.fault);
                EXPECT_EQ(proof.text, spelled(command.text)) << command.name;
            } else {
                EXPECT_TRUE(!proof.isGood || proof.text.contains("⟨U+")) << command.name;
                EXPECT_NE(proof.text, spelled(command.text)) << command.name;
            }
        }
    }
}

TEST(WithNoto, OrdinaryCommandsAreAllShownAsTheyAre) {
    if (!QFontDatabase::families().contains("Noto Sans CJK JP")) {
        GTEST_SKIP() << "ctest runs this with the fonts of tools/unpack-fonts";
    }
    for (const test::Command& command : test::commands()) {
        for (const double ratio : ratios) {
            const TextProof proof = test::proofOfRequest(command.text, ratio);
            EXPECT_TRUE(proof.isGood) << command.name << " at " << ratio << ", fault " << int(proof.fault);
            EXPECT_EQ(proof.text, spelled(command.text)) << command.name;
        }
    }
}

} // namespace veslora
