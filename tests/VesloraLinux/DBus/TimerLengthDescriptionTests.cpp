// SPDX-License-Identifier: MIT
#include "VesloraLinux/DBus/TimerLengthDescription.h"
#include "tests/VesloraLinux/Support/Waiting.h"

#include <QCoreApplication>
#include <QLocale>
#include <QTranslator>

#include <gtest/gtest.h>

#include <limits>

namespace veslora {
namespace {

/// Says everything in German.
class GermanWords final : public QTranslator {
  public:
    [[nodiscard]] bool isEmpty() const override { return false; }
    [[nodiscard]] QString translate(const char* context, const char* source, const char* /*comment*/,
                                    int /*number*/) const override {
        const QByteArray text(source);
        if (QByteArray(context) != "TimerLength") {
            return {};
        }
        return text == "%1 hr"    ? "%1 Std."
               : text == "%1 min" ? "%1 Min."
               : text == ", "     ? " und "
                                  : "%1 Sek.";
    }
};

class TimerLengthDescription : public ::testing::Test {
  protected:
    void SetUp() override { QLocale::setDefault(QLocale(QLocale::English)); }
    void TearDown() override { QLocale::setDefault(QLocale::system()); }

    testing::CoreApplication application;
};

TEST_F(TimerLengthDescription, LeavesOutWhatIsZero) {
    EXPECT_EQ(timerLengthDescription(1500), "25 min");
    EXPECT_EQ(timerLengthDescription(5400), "1 hr, 30 min");
    EXPECT_EQ(timerLengthDescription(3600), "1 hr");
    EXPECT_EQ(timerLengthDescription(45), "45 sec");
    EXPECT_EQ(timerLengthDescription(3605), "1 hr, 5 sec");
    EXPECT_EQ(timerLengthDescription(3661), "1 hr, 1 min, 1 sec");
    EXPECT_EQ(timerLengthDescription(0), "0 sec");
}

TEST_F(TimerLengthDescription, HidesFractions) {
    EXPECT_EQ(timerLengthDescription(59.6), "1 min");
    EXPECT_EQ(timerLengthDescription(60.4), "1 min");
    EXPECT_EQ(timerLengthDescription(0.2), "0 sec");
}

TEST_F(TimerLengthDescription, LengthsBeyondReasonDoNoHarm) {
    EXPECT_EQ(timerLengthDescription(-60), "0 sec");
    EXPECT_EQ(timerLengthDescription(std::numeric_limits<double>::quiet_NaN()), "0 sec");
    EXPECT_EQ(timerLengthDescription(std::numeric_limits<double>::infinity()), "1,000,000 hr");
}

TEST_F(TimerLengthDescription, SpeaksTheUsersLanguage) {
    GermanWords german;
    QCoreApplication::installTranslator(&german);
    EXPECT_EQ(timerLengthDescription(5400), "1 Std. und 30 Min.");
    QCoreApplication::removeTranslator(&german);
    EXPECT_EQ(timerLengthDescription(5400), "1 hr, 30 min");
}

} // namespace
} // namespace veslora
