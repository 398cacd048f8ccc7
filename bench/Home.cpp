// SPDX-License-Identifier: MIT
#include "bench/Home.h"

#include "VesloraCore/Text/Json.h"
#include "bench/Clock.h"

#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <stdexcept>

namespace veslora::bench {

namespace {

/// In memory, as a login's runtime folder is.
std::string makeRuntimeFolder() {
    std::string name = "/dev/shm/veslora-bench-XXXXXX";
    if (mkdtemp(name.data()) == nullptr) {
        throw std::runtime_error("no folder in memory");
    }
    return name;
}

double wallClock() {
    timespec time{};
    clock_gettime(CLOCK_REALTIME, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

} // namespace

std::string hookPayload(const std::string& event, const std::string& sessionId, const std::string& command) {
    Json payload = Json::makeObject();
    const auto text = [&payload](const char* key, const std::string& value) {
        payload.set(key, Json::makeString(value));
    };
    text("session_id", sessionId);
    text("transcript_path", "/home/me/.claude/projects/-home-me-project/" + sessionId + ".jsonl");
    text("cwd", "/home/me/project");
    text("permission_mode", "default");
    text("hook_event_name", event);
    if (command.empty()) {
        text("prompt", "And now the tests.");
    } else {
        Json input = Json::makeObject();
        input.set("command", Json::makeString(command));
        input.set("description", Json::makeString("One step of the work"));
        text("tool_name", "Bash");
        payload.set("tool_input", input);
    }
    return payload.print(Json::Layout::compact) + "\n";
}

std::string sessionFile(const std::string& sessionId, int process, const std::string& status,
                        double statusSince) {
    Json file = Json::makeObject();
    const auto text = [&file](const char* key, const std::string& value) {
        file.set(key, Json::makeString(value));
    };
    const auto stamp = static_cast<std::int64_t>(statusSince * 1000);
    file.set("pid", Json::makeInteger(process));
    file.set("startedAt", Json::makeInteger(stamp));
    file.set("statusUpdatedAt", Json::makeInteger(stamp));
    file.set("updatedAt", Json::makeInteger(stamp));
    text("sessionId", sessionId);
    text("cwd", "/home/me/project");
    text("version", "2.1.329");
    text("kind", "interactive");
    text("entrypoint", "cli");
    text("messagingSocketPath", "/home/me/socks/" + std::to_string(process) + ".sock");
    text("name", "project-" + std::to_string(process % 100));
    text("status", status);
    return file.print(Json::Layout::compact);
}

Home::Home(const std::string& executables, const std::string& settings) : m_runtime(makeRuntimeFolder()) {
    for (std::size_t index = 0; index < sessionCount; ++index) {
        m_agents.push_back(std::make_unique<testing::Program>(std::vector<std::string>{"sleep", "100000"}));
    }
    setenv("HOME", path().c_str(), 1);
    setenv("XDG_RUNTIME_DIR", m_runtime.c_str(), 1);
    std::filesystem::create_directories(path() + "/.claude/sessions");
    std::filesystem::create_directories(path() + "/.config/Veslora");
    m_folder.put(".config/Veslora/settings.json", settings);
    installHooks(executables);
    // As they are after the first use, so that the harness can watch the folder from the start.
    for (const std::string& folder : {spool(), answers()}) {
        std::filesystem::create_directories(folder);
        std::filesystem::permissions(folder, std::filesystem::perms::owner_all);
    }
    for (std::size_t index = 0; index < sessionCount; ++index) {
        setSession(index, "idle");
    }
}

Home::~Home() {
    std::error_code ignored;
    std::filesystem::remove_all(m_runtime, ignored);
}

void Home::installHooks(const std::string& executables) const {
    if (testing::Program({executables + "/veslora-bench-inside", "hooks", path(), m_runtime}).wait() != 0) {
        throw std::runtime_error("the hooks could not be installed");
    }
}

std::string Home::sessionId(std::size_t index) {
    return "43044874-ca7b-4fcf-8bd6-5b494a07e2e" + std::to_string(index);
}

void Home::setSession(std::size_t index, const std::string& status) const {
    const int process = m_agents[index]->pid();
    m_folder.put(".claude/sessions/" + std::to_string(process) + ".json",
                 sessionFile(sessionId(index), process, status, wallClock()));
}

double Home::file(const std::string& name, const std::string& payload) const {
    // Named as the scripts' own: nothing with ".json" at its end before it is whole.
    const std::string from = m_folder.put(".local/share/Veslora/claude-spool/tmp.bench", payload);
    const std::string to = spool() + "/" + name;
    const double start = monotonicNow();
    if (std::rename(from.c_str(), to.c_str()) != 0) {
        throw std::runtime_error("nothing can be filed");
    }
    return start;
}

double Home::fileRequest(const std::string& id, const std::string& command) const {
    return file("perm-" + id + ".json", hookPayload("PermissionRequest", sessionId(0), command));
}

double Home::fileToolDone(const std::string& id, const std::string& command) const {
    return file(id + ".json", hookPayload("PostToolUse", sessionId(0), command));
}

double Home::filePrompt(const std::string& id) const {
    return file(id + ".json", hookPayload("UserPromptSubmit", sessionId(0)));
}

bool Home::isTaken(const std::string& name) const {
    return access((spool() + "/" + name).c_str(), F_OK) != 0;
}

} // namespace veslora::bench
