// SPDX-License-Identifier: MIT
// Holds docs/protocol.md against the code: the tables of its end, and that it tells of every name in the
// support directory. Values that only a script's text has are taken from that text.
#include "VesloraCore/Agents/ClaudeDecision.h"
#include "VesloraCore/Agents/ClaudePermissionRequest.h"
#include "VesloraCore/Agents/ClaudePermissions.h"
#include "VesloraCore/Agents/Hooks/ClaudeHooksInstaller.h"
#include "VesloraCore/Agents/Hooks/HookPayload.h"
#include "VesloraCore/Agents/Hooks/HookScripts.h"
#include "VesloraCore/Agents/Hooks/SupportNames.h"
#include "VesloraCore/Text/Json.h"
#include "tests/VesloraCore/TestData.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <regex>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

using namespace veslora;
using namespace veslora::test;
using ClaudeHooksInstaller::HookSet;
using testing::ContainerEq;

namespace {

using Table = std::map<std::string, std::string>;

std::string protocol() {
    return dataFile("../../docs/protocol.md");
}

/// What is between backquotes in a line.
std::vector<std::string> quotedIn(const std::string& line) {
    std::vector<std::string> texts;
    std::istringstream rest(line);
    for (std::string skipped, text; std::getline(rest, skipped, '`') && std::getline(rest, text, '`');) {
        texts.push_back(text);
    }
    return texts;
}

/// The first two texts in backquotes of each row below a heading, up to the next one.
Table tableBelow(const std::string& heading) {
    Table table;
    bool isBelow = false;
    std::istringstream document(protocol());
    for (std::string line; std::getline(document, line);) {
        if (line.starts_with('#')) {
            isBelow = line == heading;
        } else if (isBelow && line.starts_with("| `")) {
            const std::vector<std::string> cells = quotedIn(line);
            const bool isNew = cells.size() > 1 && table.emplace(cells[0], cells[1]).second;
            EXPECT_TRUE(isNew) << line;
        }
    }
    return table;
}

/// What a text holds between two others; empty where that is nowhere.
std::string between(std::string_view text, std::string_view before, std::string_view after) {
    const std::size_t found = text.find(before);
    if (found == std::string_view::npos) {
        return {};
    }
    text.remove_prefix(found + before.size());
    const std::size_t end = text.find(after);
    return end == std::string_view::npos ? std::string() : std::string(text.substr(0, end));
}

std::string joined(const std::vector<std::string>& texts) {
    std::string line;
    for (const std::string& text : texts) {
        line += (line.empty() ? "" : ", ") + text;
    }
    return line;
}

/// The names in the support directory by those of their constants, also of one that nobody thought of here.
Table supportNames() {
    const std::string header = dataFile("../../VesloraCore/Agents/Hooks/SupportNames.h");
    const std::regex constant(R"re(string_view (\w+) =\s*"([^"]*)")re");
    Table names;
    for (std::sregex_iterator found(header.begin(), header.end(), constant), end; found != end; ++found) {
        names.emplace((*found)[1].str(), (*found)[2].str());
    }
    return names;
}

/// What a permission script prints for an answer.
std::string printedFor(std::string_view script, ClaudeDecision decision) {
    const std::string branch = " " + std::string(word(decision)) + ") printf '%s' '";
    const std::string printed = between(script, branch, "' ;;");
    return printed.empty() ? "(nothing)" : printed;
}

/// The only time limit in a configuration whose event script has none.
std::string permissionTimeout() {
    const std::string configuration = ClaudeHooksInstaller::installing(
        std::nullopt, {.event = "event", .permission = "permission"}, HookSet::claude());
    return between(configuration, "\"timeout\" : ", ",");
}

/// The values that the core names.
Table coreValues() {
    return {
        {"permissionWait", std::to_string(HookScripts::permissionWait) + " s"},
        {"spoolLimit", std::to_string(HookScripts::spoolLimit) + " entries"},
        {"permissionTimeout", permissionTimeout() + " s"},
        {"codexEventTimeout", std::to_string(HookSet::codex().timeout.value_or(0)) + " s"},
        {"longestPayload", std::to_string(ClaudePermissionRequest::longestPayload) + " bytes"},
        {"longestInput", std::to_string(HookPayload::longestInput) + " bytes"},
        {"longestText", std::to_string(HookPayload::longestText) + " bytes"},
        {"depthLimit", std::to_string(Json::depthLimit) + " deep"},
        {"claudeEvents", joined(HookSet::claude().events)},
        {"codexEvents", joined(HookSet::codex().events)},
    };
}

/// The values that stand in a permission script alone.
Table scriptValues(std::string_view script) {
    // One digit more than a number may have.
    const std::string tooLong = between(script, "*[!0123456789]* | ", "*) return 1");
    return {
        {"looks", between(script, "polls=$((number * ", "))") + " a second"},
        {"pause", between(script, "\n    sleep ", "\n") + " s"},
        {"heartbeatAge", between(script, "\"$((number - beat))\" -le ", " ]") + " s"},
        {"bytesRead", between(script, "dd bs=", " count=1") + " bytes"},
        {"longestNumber", std::to_string(tooLong.size() - 1) + " digits"},
        {"drainTime", between(script, "then timeout ", " cat") + " s"},
    };
}

} // namespace

TEST(ProtocolDocument, TellsOfEveryNameInTheSupportDirectory) {
    const Table names = supportNames();
    ASSERT_EQ(names.at("claudeSpool"), SupportNames::claudeSpool) << "the header is read";
    const std::string document = protocol();
    for (const auto& [constant, name] : names) {
        const bool isTold = document.find("`" + name + "`") != std::string::npos ||
                            document.find("`" + name + "/`") != std::string::npos;
        EXPECT_TRUE(isTold) << constant << " is " << name;
    }
}

TEST(ProtocolDocument, TellsWhatEachAnswerPrints) {
    for (const std::string_view name : {SupportNames::claudePermission, SupportNames::codexPermission}) {
        Table printed;
        for (const ClaudeDecision decision :
             {ClaudeDecision::allow, ClaudeDecision::deny, ClaudeDecision::pass}) {
            printed.emplace(word(decision), printedFor(HookScripts::text(name), decision));
        }
        EXPECT_THAT(tableBelow("### Words"), ContainerEq(printed)) << name;
    }
}

TEST(ProtocolDocument, TellsEveryValueAsItIs) {
    for (const std::string_view name : {SupportNames::claudePermission, SupportNames::codexPermission}) {
        Table values = scriptValues(HookScripts::text(name));
        values.merge(coreValues());
        EXPECT_THAT(tableBelow("### Values"), ContainerEq(values)) << name;
    }
    EXPECT_EQ(ClaudePermissions::wait, double{HookScripts::permissionWait}) << "one row tells of both";
}
