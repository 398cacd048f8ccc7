// SPDX-License-Identifier: MIT
#include "VesloraCore/Agents/ClaudePermissionRequest.h"
#include "VesloraCore/Agents/ClaudeRequestText.h"
#include "VesloraCore/Agents/ClaudeSessionFile.h"
#include "VesloraCore/Agents/Hooks/ClaudeActivity.h"
#include "VesloraCore/Agents/Hooks/ClaudeHookEvent.h"
#include "VesloraCore/Agents/Hooks/CodexHookEvent.h"
#include "VesloraCore/Agents/Hooks/HookPayload.h"
#include "VesloraCore/Text/IdentifierText.h"
#include "VesloraCore/Text/Iso8601.h"
#include "tests/VesloraCore/TestData.h"
#include "tests/VesloraCore/TestJson.h"

#include <gtest/gtest.h>

using namespace veslora;

namespace {

// The same rules, told of a document that was built as a whole: plain and slow, to be compared with.
namespace built {

std::optional<Json> object(std::string_view bytes) {
    auto root = Json::parse(bytes);
    return root && root->isObject() ? root : std::nullopt;
}

Json inputOf(const Json& root) {
    const Json* input = root.objectAt("tool_input");
    return input ? *input : Json::makeObject();
}

std::optional<ClaudeHookEvent> claudeEvent(std::string_view bytes) {
    const auto root = object(bytes);
    if (!root || root->textAt("session_id").empty() || !root->stringAt("hook_event_name")) {
        return std::nullopt;
    }
    ClaudeHookEvent event{root->textAt("session_id"), 5, ClaudeHookEvent::Ignored{}, std::nullopt};
    const std::string name = root->textAt("hook_event_name");
    const std::string message = root->textAt("message");
    const std::string* type = root->stringAt("notification_type");
    if (name == "UserPromptSubmit") {
        event.kind = ClaudeHookEvent::Prompt{};
    }
    if (name == "Stop") {
        event.kind = ClaudeHookEvent::Stop{};
    }
    if (name == "PreToolUse") {
        event.kind =
            ClaudeHookEvent::ToolStart{ClaudeActivity::describe(root->textAt("tool_name"), inputOf(*root))};
    }
    if (name == "Notification" && (type ? *type == "permission_prompt" || *type == "elicitation_dialog"
                                        : message.find("needs your permission") != std::string::npos)) {
        event.kind = ClaudeHookEvent::NeedsYou{message};
    }
    if (name == "PostToolUse") {
        event.kind = ClaudeHookEvent::ToolDone{};
        event.tool = ToolUse{root->textAt("tool_name"), ToolUse::inputText(inputOf(*root))};
    }
    return event;
}

// What an event of Codex holds besides its kind, whose rules are Claude's.
std::optional<CodexHookEvent> codexEvent(std::string_view bytes) {
    const auto root = object(bytes);
    if (!root || !IdentifierText::isPlain(root->textAt("session_id")) || !root->stringAt("hook_event_name")) {
        return std::nullopt;
    }
    CodexHookEvent event{root->textAt("session_id"), 5, 42, root->textAt("cwd"), CodexHookEvent::Ignored{}};
    if (root->textAt("hook_event_name") == "PreToolUse") {
        event.kind =
            CodexHookEvent::ToolStart{ClaudeActivity::describe(root->textAt("tool_name"), inputOf(*root))};
    }
    return event;
}

std::optional<ClaudePermissionRequest> request(std::string_view bytes) {
    const auto root = object(bytes);
    if (!root || root->textAt("hook_event_name") != "PermissionRequest" ||
        root->textAt("session_id").empty() || root->textAt("tool_name").empty()) {
        return std::nullopt;
    }
    const Json input = inputOf(*root);
    ClaudePermissionRequest request;
    request.id = "id";
    request.sessionId = root->textAt("session_id");
    request.tool = root->textAt("tool_name");
    request.cwd = root->textAt("cwd");
    request.text = ClaudeRequestText::describe(request.tool, input, "/home/me");
    request.input = ToolUse::inputText(input);
    request.receivedAt = 5;
    return request;
}

std::optional<Timestamp> date(const Json* value) {
    if (const std::string* text = value ? value->string() : nullptr) {
        return Iso8601::parse(*text);
    }
    const auto milliseconds = value ? value->number() : std::nullopt;
    return milliseconds ? std::optional(*milliseconds / 1000.0) : std::nullopt;
}

std::optional<ClaudeSessionFile> sessionFile(std::string_view bytes) {
    const auto root = object(bytes);
    const Json* pid = root ? root->find("pid") : nullptr;
    if (!pid || !pid->integer32() || root->textAt("sessionId").empty()) {
        return std::nullopt;
    }
    const std::string status = root->textAt("status");
    const std::string reason = root->textAt("waitingFor");
    const bool isDialog = status == "waiting" && reason == "dialog open";
    ClaudeSessionFile file;
    file.sessionId = root->textAt("sessionId");
    file.pid = *pid->integer32();
    file.cwd = root->textAt("cwd");
    file.name = root->textAt("name");
    file.isBusy = status == "busy" || isDialog;
    if (status == "waiting" && !isDialog) {
        file.waitingFor = reason;
    }
    file.statusSince = date(root->find("statusUpdatedAt"));
    file.version = root->textAt("version");
    if (const std::string* pane = root->stringAt("tmux")) {
        file.tmux = *pane;
    }
    return file;
}

} // namespace built

// How many readings of the bytes gave anything.
int compare(const std::string& bytes) {
    const auto event = ClaudeHookEvent::parse(bytes, 5);
    EXPECT_EQ(event, built::claudeEvent(bytes)) << bytes;
    const auto recorded = ClaudeHookEvent::parse("{\"e\":" + bytes + ",\"t\":5}");
    // In the middle of a line a byte order mark is none, and there is one level less to go down.
    EXPECT_TRUE(!recorded || recorded == event) << bytes;

    auto codex = CodexHookEvent::parse(bytes, 5, 42);
    if (codex && !std::holds_alternative<CodexHookEvent::ToolStart>(codex->kind)) {
        codex->kind = CodexHookEvent::Ignored{};
    }
    EXPECT_EQ(codex, built::codexEvent(bytes)) << bytes;
    const auto request = ClaudePermissionRequest::parse(bytes, "id", 5, "/home/me");
    EXPECT_EQ(request, built::request(bytes)) << bytes;
    const auto file = ClaudeSessionFile::parse(bytes);
    EXPECT_EQ(file, built::sessionFile(bytes)) << bytes;
    return (event ? 1 : 0) + (codex ? 1 : 0) + (request ? 1 : 0) + (file ? 1 : 0);
}

std::vector<std::string> captured() {
    std::vector<std::string> texts;
    for (const char* folder : {"agents/claude/hooks", "agents/codex/hooks", "agents/claude/sessions"}) {
        for (const std::string& path : test::dataFiles(folder, ".json")) {
            texts.push_back(test::dataFile(path));
        }
    }
    return texts;
}

// Text of a document with awkward keys, equal ones among them.
class PayloadGenerator {
  public:
    std::string payload() {
        static const std::vector<std::string> keys = {"session_id",
                                                      "hook_event_name",
                                                      "tool_name",
                                                      "tool_input",
                                                      "cwd",
                                                      "message",
                                                      "sessionId",
                                                      "pid",
                                                      "notification_type",
                                                      "tool_response",
                                                      "status",
                                                      "name",
                                                      "tmux",
                                                      "waitingFor",
                                                      "statusUpdatedAt",
                                                      "\\u0074ool_name",
                                                      "tool_\\u0069nput"};
        std::string text = "{";
        for (int count = 4 + m_json.pick(14); count > 0; --count) {
            text += "\"" + any(keys) + "\":" + value() + (count > 1 ? "," : "");
        }
        return text + "}";
    }
    int pick(int count) { return m_json.pick(count); }

  private:
    const std::string& any(const std::vector<std::string>& of) {
        return of[static_cast<std::size_t>(pick(static_cast<int>(of.size())))];
    }
    std::string value() {
        static const std::vector<std::string> words = {
            "\"s-1\"",
            "\"Stop\"",
            "\"PreToolUse\"",
            "\"PostToolUse\"",
            "\"PermissionRequest\"",
            "\"Notification\"",
            "\"Bash\"",
            "\"Write\"",
            "\"/home/me/x\"",
            "\"waiting\"",
            "\"busy\"",
            "17",
            "-1",
            "\"dialog open\"",
            "\"it needs your permission\"",
            "\"permission_prompt\"",
            "1795245160360",
            "\"\"",
            "\"2027-01-15T08:00:00Z\"",
            " { \"command\" : \"ls\" , \"n\":[1,{}] } ",
            R"({"file_path":"/home/me/a","command":5,"command":"b\u00e9","\u0064escription":"d"})",
            R"({"url":"https://a.b/c","query":"q","pattern":"p","description":1})"};
        return pick(3) > 0 ? any(words) : m_json.value(3).print(Json::Layout::compact);
    }
    test::JsonGenerator m_json;
};

std::string damaged(std::string text, PayloadGenerator& random) {
    const auto place = static_cast<std::size_t>(random.pick(static_cast<int>(text.size())));
    switch (random.pick(4)) {
    case 0:
        return text.substr(0, place);
    case 1:
        text[place] = static_cast<char>(random.pick(256));
        return text;
    case 2:
        return text.erase(place, 1);
    default:
        return text.insert(place, 1, "{}[]\",:\\ 0\xEF"[random.pick(11)]);
    }
}

std::string withInput(const std::string& event, const std::string& input) {
    return R"({"tool_input":)" + input + R"(,"session_id":"s","tool_name":"Write","hook_event_name":")" +
           event + "\"}";
}

std::string objectOf(const std::string& more, std::size_t filler) {
    return "{" + more + R"("content":")" + std::string(filler, 'x') + "\"}";
}

} // namespace

TEST(HookPayload, SaysOfCapturedFilesWhatTheWholeDocumentSays) {
    PayloadGenerator random;
    for (const std::string& text : captured()) {
        EXPECT_GT(compare(text), 0) << text;
        for (int round = 0; round < 50; ++round) {
            compare(damaged(text, random));
        }
    }
}

TEST(HookPayload, SaysOfRandomDocumentsWhatTheWholeDocumentSays) {
    PayloadGenerator random;
    int taken = 0;
    for (int round = 0; round < 20'000; ++round) {
        const std::string text = random.payload();
        taken += compare(text);
        compare(damaged(text, random));
        if (HasFailure()) {
            return;
        }
    }
    EXPECT_GT(taken, 2'000);
}

TEST(HookPayload, AToolsAnswerIsNotBuiltButMustBeWellFormed) {
    const std::string start = R"({"session_id":"s","hook_event_name":"Stop","tool_response":)";
    EXPECT_TRUE(HookPayload::parse(start + R"({"a":[1,2,{"b":"c"}]}})"));
    EXPECT_FALSE(HookPayload::parse(start + R"({"a":[1,2,{"b":"c"}})"));
    EXPECT_FALSE(HookPayload::parse(start + "\"\xFF\"}"));
}

TEST(HookPayload, AnInputIsBuiltUpToAMegabyte) {
    const std::size_t longest = HookPayload::longestInput;
    const std::size_t frame = objectOf("", 0).size();
    const std::string kept = withInput("PostToolUse", objectOf("", longest - frame));
    EXPECT_TRUE(HookPayload::parse(kept)->input());
    EXPECT_FALSE(ClaudeHookEvent::parse(kept, 1)->tool->input.empty());
    const std::string over = withInput("PostToolUse", objectOf("", longest - frame + 1));
    EXPECT_FALSE(HookPayload::parse(over)->input());
    EXPECT_EQ(ClaudeHookEvent::parse(over, 1)->tool, (ToolUse{"Write", ""}));
}

TEST(HookPayload, AnActivityIsToldHoweverLongTheInputIs) {
    const std::string text =
        withInput("PreToolUse", objectOf(R"("file_path":"/a/b.txt",)", 3 * HookPayload::longestInput));
    EXPECT_EQ(ClaudeHookEvent::parse(text, 1)->kind,
              ClaudeHookEvent::Kind(ClaudeHookEvent::ToolStart{"Write: b.txt"}));
    EXPECT_EQ(CodexHookEvent::parse(text, 1, 5)->kind,
              CodexHookEvent::Kind(CodexHookEvent::ToolStart{"Write: b.txt"}));
}

TEST(HookPayload, ARequestOfMoreThanAMegabyteIsNone) {
    const auto request = [](std::size_t length) {
        std::string text = withInput("PermissionRequest", R"({"file_path":"/a"})");
        text.resize(length, ' ');
        return ClaudePermissionRequest::parse(text, "id", 5, "");
    };
    EXPECT_TRUE(request(ClaudePermissionRequest::longestPayload));
    EXPECT_FALSE(request(ClaudePermissionRequest::longestPayload + 1));
}

TEST(HookPayload, ATextOfThousandsOfBytesIsNoNameAndNoFolder) {
    const std::string longest(HookPayload::longestText, 'a');
    for (const char* key : {"session_id", "hook_event_name", "tool_name", "cwd", "notification_type"}) {
        const auto textAt = [&](const std::string& text) {
            const auto payload = HookPayload::parse("{\"" + std::string(key) + "\":\"" + text + "\"}");
            return payload->sessionId.value_or("") + payload->eventName.value_or("") + payload->tool +
                   payload->cwd + payload->notificationType.value_or("");
        };
        EXPECT_EQ(textAt(longest), longest) << key;
        EXPECT_EQ(textAt(longest + "a"), "") << key;
    }
}

TEST(HookPayload, ALongMessageIsCutBetweenCodePoints) {
    const auto kept = [](const std::string& message) {
        const auto event = ClaudeHookEvent::parse(
            R"({"session_id":"s","hook_event_name":"Notification","notification_type":"permission_prompt",)"
            R"("message":")" +
                message + "\"}",
            1);
        return std::get<ClaudeHookEvent::NeedsYou>(event->kind).message;
    };
    const std::string longest(HookPayload::longestText, 'a');
    EXPECT_EQ(kept(longest), longest);
    EXPECT_EQ(kept(longest + "b"), longest);
    const std::string before(HookPayload::longestText - 1, 'a');
    EXPECT_EQ(kept(before + "é"), before);
    EXPECT_EQ(kept(before + "😀"), before);
}
