// SPDX-License-Identifier: MIT
// Which language the program speaks, and that German says what it should.
#include "VesloraCore/Agents/AgentTraits.h"
#include "VesloraCore/Metronome/MetronomeSound.h"
#include "VesloraUI/Store/SettingsKeys.h"
#include "VesloraUI/Style/Accent.h"
#include "VesloraUI/Support/ReadersWords.h"
#include "VesloraUI/Support/Translations.h"
#include "VesloraUI/Widgets/ModuleActions.h"
#include "VesloraUI/Widgets/WidgetTitle.h"
#include "tests/VesloraUI/Fixtures/CatalogFile.h"

#include <QGuiApplication>

#include <gtest/gtest.h>

#include <map>
#include <string>

namespace veslora {
namespace {

QString chosen(const QStringList& languages) {
    return Translations(languages).language();
}

TEST(TranslationsTests, TheFirstLanguageWithTextsIsSpoken) {
    EXPECT_EQ(chosen({"de-DE"}), "de");
    EXPECT_EQ(chosen({"de"}), "de");
    EXPECT_EQ(chosen({"de-AT", "en-GB"}), "de");
    EXPECT_EQ(chosen({"en-GB", "de-DE"}), "en");
    EXPECT_EQ(chosen({"tlh", "de"}), "de");
}

TEST(TranslationsTests, EnglishIsSpokenWhereThereIsNoOther) {
    EXPECT_EQ(chosen({}), "en");
    EXPECT_EQ(chosen({""}), "en");
    EXPECT_EQ(chosen({"tlh"}), "en");
    EXPECT_EQ(chosen({"../veslora_de"}), "en");
    EXPECT_EQ(chosen({"dev"}), "en");
}

/// Has a variable as a test wants it, until it ends.
class Variable {
  public:
    Variable(const char* name, const QByteArray& value) : m_name(name), m_former(qgetenv(name)) {
        qputenv(name, value);
    }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;
    ~Variable() { m_former.isNull() ? qunsetenv(m_name) : qputenv(m_name, m_former); }

  private:
    const char* m_name;
    QByteArray m_former;
};

TEST(TranslationsTests, WhereNoLanguageIsAskedForLanguageHasNoSay) {
    const Variable languages("LANGUAGE", "de");
    const Variable messages("LC_MESSAGES", "");
    const Variable any("LANG", "");
    for (const char* locale : {"C", "C.UTF-8", "POSIX", ""}) {
        const Variable all("LC_ALL", locale);
        EXPECT_EQ(Translations::ofUser(), QStringList{"en"}) << locale;
    }
}

TEST(TranslationsTests, WordsNeedNoApplicationToKnowThem) {
    const Translations german({"de"});
    EXPECT_EQ(german.words().translate("AgentStatus", "DONE"), "FERTIG");
    EXPECT_EQ(german.words().translate("AgentStatus", "no such text"), "no such text");
}

class GermanTests : public testing::Test {
  protected:
    void SetUp() override { german.install(); }

    [[nodiscard]] static QString plural(const char* context, const char* source, int count) {
        return QCoreApplication::translate(context, source, nullptr, count);
    }

    Translations german{{"de"}};
};

TEST_F(GermanTests, HasItsPlurals) {
    EXPECT_EQ(plural("veslora::WidgetLibraryPresenter", "%Ln unit(s) wide", 1), "1 Einheit breit");
    EXPECT_EQ(plural("veslora::WidgetLibraryPresenter", "%Ln unit(s) wide", 2), "2 Einheiten breit");
    EXPECT_EQ(plural("veslora::ClaudeWidgetPresenter", "%Ln working", 1), "1 arbeitet");
    EXPECT_EQ(plural("veslora::ClaudeWidgetPresenter", "%Ln working", 3), "3 arbeiten");
    EXPECT_EQ(plural("veslora::TimerPickerPresenter", "%Ln minute(s)", 25), "25 Minuten");
}

TEST_F(GermanTests, IsWhatTheCoreSaysAndGoesWithItsTranslations) {
    EXPECT_EQ(readersWords().translate("AgentMessages", "Waiting for you"), "Wartet auf Antwort");
    EXPECT_EQ(shownTitle(WidgetID::clock), "Uhr");
}

TEST_F(GermanTests, LeavesTheLayoutFromTheLeft) {
    EXPECT_EQ(QGuiApplication::layoutDirection(), Qt::LeftToRight);
}

TEST(EnglishTests, HasItsPlurals) {
    EXPECT_EQ(QCoreApplication::translate("veslora::TimerPickerPresenter", "%Ln minute(s)", nullptr, 1),
              "1 minute");
    EXPECT_EQ(QCoreApplication::translate("veslora::TimerPickerPresenter", "%Ln minute(s)", nullptr, 5),
              "5 minutes");
}

/// What is looked up by a variable is not seen by the tool that collects texts, unless it is marked.
class MarkedTexts : public testing::Test {
  protected:
    void expect(const char* context, std::string_view text) const {
        EXPECT_TRUE(catalog.has(context, QString::fromUtf8(text))) << context << ": " << text;
    }
    CatalogFile catalog{"de"};
};

TEST_F(MarkedTexts, EveryTableIsComplete) {
    for (const WidgetID id : allWidgetIDs) {
        expect("Widgets", title(id));
    }
    for (const MetronomeSound sound : allMetronomeSounds) {
        expect("MetronomeSounds", displayName(sound));
    }
    for (const std::string_view sound : SettingsKeys::timerSounds) {
        expect("TimerSounds", sound);
    }
    for (const DisplayChoice choice : {DisplayChoice::builtIn, DisplayChoice::main}) {
        expect("Displays", displayName(choice));
    }
    for (const Accent accent : AccentColors::allCases) {
        expect("Accents", AccentColors::displayName(accent));
    }
    for (const AgentTraits& agent : agentTraits) {
        for (const char* text : {agent.hookTexts.title, agent.hookTexts.detail, agent.hookTexts.footer,
                                 agent.hookTexts.notUnderstood}) {
            expect("AgentHooks", text);
        }
    }
    for (const auto action : ModuleActions::all) {
        expect("ModuleActions", ModuleActions::name(action).toStdString());
    }
}

} // namespace
} // namespace veslora
