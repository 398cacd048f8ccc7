// SPDX-License-Identifier: MIT
// See HookRoom.h.
#include "tests/hooks/HookRoom.h"

#include "VesloraCore/Agents/Hooks/HookScripts.h"

#include <fcntl.h>
#include <grp.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <thread>
#include <utility>

namespace veslora::test {

namespace fs = std::filesystem;

namespace {

constexpr uid_t strangerId = 65534;

void writeFile(const std::string& path, std::string_view bytes, fs::perms mode = fs::perms(0644)) {
    std::ofstream file(path, std::ios::binary);
    file << bytes;
    file.close();
    EXPECT_TRUE(file.good()) << path;
    fs::permissions(path, mode);
}

std::string readFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

// What lies in a pipe now.
std::string readPipe(int file) {
    std::string text;
    std::array<char, 4096> part{};
    for (ssize_t length = 0; (length = ::read(file, part.data(), part.size())) > 0;) {
        text.append(part.data(), static_cast<std::size_t>(length));
    }
    return text;
}

// Between fork and exec: nothing here may allocate or lock.
void limitFileSize(FullDisk disk) {
    if (disk == FullDisk::no) {
        return;
    }
    const rlimit none = {0, 0};
    setrlimit(RLIMIT_FSIZE, &none);
    std::signal(SIGXFSZ, disk == FullDisk::writeFails ? SIG_IGN : SIG_DFL);
}

void becomeStranger() {
    // Permissions bind everybody but root.
    if (geteuid() == 0 &&
        (setgroups(0, nullptr) != 0 || setgid(strangerId) != 0 || setuid(strangerId) != 0)) {
        _exit(126);
    }
}

std::vector<char*> pointers(const std::vector<std::string>& texts) {
    std::vector<char*> made;
    for (const std::string& text : texts) {
        made.push_back(const_cast<char*>(text.c_str()));
    }
    made.push_back(nullptr);
    return made;
}

struct Pipe {
    Pipe() { EXPECT_EQ(pipe2(ends, O_CLOEXEC), 0); }
    int ends[2] = {-1, -1};
};

// The standard input of a script, and the end that keeps it open, if there is one.
std::pair<int, int> makeInput(const std::string& path, std::string_view bytes, bool staysOpen) {
    if (staysOpen) {
        const Pipe pipe;
        EXPECT_EQ(::write(pipe.ends[1], bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
        return {pipe.ends[0], pipe.ends[1]};
    }
    writeFile(path, bytes);
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    EXPECT_GE(file, 0) << path;
    return {file, -1};
}

// Stands in for "sleep": counts its calls, and does what the test wants done at one of them.
constexpr std::string_view sleepText = R"sh(#!/bin/sh
polls=0
[ -f "$scratch/polls" ] && read -r polls <"$scratch/polls"
polls=$((polls + 1))
echo "$polls" >"$scratch/polls"
[ -f "$scratch/at-$polls" ] || exit 0
for request in "$support"/*-spool/perm-*; do
    id=${request##*/perm-}
    id=${id%.json}
done
. "$scratch/at-$polls"
)sh";

constexpr std::string_view dateText = "#!/bin/sh\nread -r now <\"$scratch/clock\"\necho \"$now\"\n";
constexpr std::string_view mktempText = "#!/bin/sh\nread -r suffix <\"$scratch/suffix\"\n: "
                                        ">\"${1%XXXXXX}$suffix\" && echo \"${1%XXXXXX}$suffix\"\n";

} // namespace

const std::vector<Shell>& shells() {
    static const std::vector<Shell> all = {{"dash", {"/usr/bin/dash"}, false},
                                           {"bash", {"/usr/bin/bash", "--posix"}, false},
                                           {"busybox", {"/usr/bin/busybox", "sh"}, false},
                                           {"busyboxAlone", {"/usr/bin/busybox", "sh"}, true}};
    return all;
}

const std::vector<Agent>& agents() {
    const std::string suffix = "[A-Za-z0-9]{6}";
    const std::string parent = std::to_string(getpid());
    static const std::vector<Agent> all = {
        {"claude", "claude-hook.sh", "claude-permission.sh", "claude-spool", "answers",
         "tmp\\." + suffix + "\\.json", "perm-(" + suffix + ")\\.json"},
        {"codex", "codex-hook.sh", "codex-permission.sh", "codex-spool", "codex-answers",
         "ev-" + parent + "-" + suffix + "\\.json", "perm-(" + parent + "-" + suffix + ")\\.json"}};
    return all;
}

bool becomesTrue(const std::function<bool()>& condition) {
    using namespace std::chrono_literals;
    const auto deadline = std::chrono::steady_clock::now() + 30s;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline) {
            return false;
        }
        std::this_thread::sleep_for(5ms);
    }
    return true;
}

Running::~Running() {
    for (const int file : {m_input, m_out, m_err}) {
        if (file >= 0) {
            close(file);
        }
    }
    if (m_isEnded) {
        return;
    }
    kill(-m_pid, SIGKILL);
    waitpid(m_pid, nullptr, 0);
}

Result Running::result() {
    int status = 0;
    m_isEnded = becomesTrue([&] { return waitpid(m_pid, &status, WNOHANG) == m_pid; });
    EXPECT_TRUE(m_isEnded) << "the script did not end";
    if (!m_isEnded) {
        return {};
    }
    const int code = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    return {code, readPipe(m_out), readPipe(m_err)};
}

bool Running::feed(std::string_view bytes) {
    void (*const former)(int) = std::signal(SIGPIPE, SIG_IGN);
    const int input = std::exchange(m_input, -1);
    bool isTaken = true;
    while (isTaken && !bytes.empty()) {
        const ssize_t length = ::write(input, bytes.data(), bytes.size());
        isTaken = length > 0;
        bytes.remove_prefix(isTaken ? static_cast<std::size_t>(length) : 0);
    }
    close(input);
    std::signal(SIGPIPE, former);
    return isTaken;
}

void Running::signal(int number) const {
    kill(m_pid, number);
}

void Running::signalGroup(int number) const {
    kill(-m_pid, number);
}

HookRoom::HookRoom(Shell shell) : m_shell(std::move(shell)) {
    std::string pattern = fs::temp_directory_path().string() + "/veslora-hooks-XXXXXX";
    EXPECT_NE(mkdtemp(pattern.data()), nullptr);
    m_root = pattern;
    m_support = m_root + "/it's here";
    fs::permissions(m_root, fs::perms(0755));
    fs::create_directory(m_support);
    fs::permissions(m_support, fs::perms(0755));
    for (const HookScripts::Script& script : HookScripts::all()) {
        writeFile(path(std::string(script.fileName)), script.text, fs::perms(0755));
    }
    writeTools();
    setTime(1'700'000'000);
}

HookRoom::~HookRoom() {
    std::error_code ignored;
    fs::remove_all(m_root, ignored);
}

void HookRoom::writeTools() const {
    for (const char* directory : {"/manual", "/tools"}) {
        fs::create_directory(m_root + directory);
    }
    writeFile(m_root + "/manual/sleep", sleepText, fs::perms(0755));
    writeFile(m_root + "/manual/date", dateText, fs::perms(0755));
    for (const char* tool :
         {"cat", "mv", "rm", "mkdir", "mktemp", "date", "sleep", "sh", "dd", "readlink", "timeout"}) {
        fs::create_symlink("/usr/bin/busybox", m_root + "/tools/" + tool);
    }
}

void HookRoom::write(const std::string& name, std::string_view bytes) const {
    fs::create_directories(fs::path(path(name)).parent_path());
    writeFile(path(name), bytes);
}

std::string HookRoom::read(const std::string& name) const {
    EXPECT_TRUE(exists(name)) << name;
    return readFile(path(name));
}

bool HookRoom::exists(const std::string& name) const {
    return fs::exists(fs::symlink_status(path(name)));
}

std::vector<std::string> HookRoom::names(const std::string& directory) const {
    std::vector<std::string> found;
    std::error_code ignored;
    for (const auto& entry : fs::directory_iterator(path(directory), ignored)) {
        found.push_back(entry.path().filename().string());
    }
    std::ranges::sort(found);
    return found;
}

unsigned HookRoom::mode(const std::string& name) const {
    return static_cast<unsigned>(fs::status(path(name)).permissions());
}

void HookRoom::setTime(long long seconds) const {
    writeFile(m_root + "/clock", std::to_string(seconds) + "\n");
}

void HookRoom::atPoll(int number, const std::string& commands) const {
    writeFile(m_root + "/at-" + std::to_string(number), commands);
}

int HookRoom::polls() const {
    return std::atoi(readFile(m_root + "/polls").c_str());
}

void HookRoom::setSuffix(const std::string& suffix) const {
    writeFile(m_root + "/suffix", suffix + "\n");
    writeFile(m_root + "/manual/mktemp", mktempText, fs::perms(0755));
}

std::vector<std::string> HookRoom::environment(const Options& options) const {
    const std::string tools = m_shell.bringsTools ? m_root + "/tools" : "/usr/bin:/bin";
    std::vector<std::string> made = {"scratch=" + m_root, "support=" + m_support,
                                     "PATH=" + (options.clock == Clock::manual ? m_root + "/manual:" : "") +
                                         tools};
    for (const auto& [name, value] : options.environment) {
        made.push_back(name + "=" + value);
    }
    return made;
}

std::unique_ptr<Running> HookRoom::start(const std::string& script, std::string_view input,
                                         const Options& options) {
    std::vector<std::string> command = m_shell.command;
    command.push_back(options.byNameAlone ? script : path(script));
    const std::vector<std::string> texts = environment(options);
    const std::vector<char*> arguments = pointers(command);
    const std::vector<char*> variables = pointers(texts);
    const std::string directory = options.byNameAlone ? m_support : "/";
    const auto [in, inputEnd] =
        makeInput(m_root + "/in-" + std::to_string(++m_runs), input, options.inputStaysOpen);
    const Pipe out;
    const Pipe err;

    const pid_t pid = fork();
    if (pid == 0) {
        setpgid(0, 0);
        if (dup2(in, 0) < 0 || dup2(out.ends[1], 1) < 0 || dup2(err.ends[1], 2) < 0 ||
            chdir(directory.c_str()) != 0) {
            _exit(126);
        }
        umask(0022);
        limitFileSize(options.disk);
        if (options.user == User::stranger) {
            becomeStranger();
        }
        execve(arguments[0], arguments.data(), variables.data());
        _exit(127);
    }
    EXPECT_GT(pid, 0);
    setpgid(pid, pid);
    for (const int file : {in, out.ends[1], err.ends[1]}) {
        close(file);
    }
    for (const int file : {out.ends[0], err.ends[0]}) {
        fcntl(file, F_SETFL, O_NONBLOCK);
    }
    return std::make_unique<Running>(pid, inputEnd, out.ends[0], err.ends[0]);
}

Result HookRoom::run(const std::string& script, std::string_view input, const Options& options) {
    // Root is kept out by becoming somebody else, everybody else by the mode.
    const fs::perms mode = fs::status(m_support).permissions();
    if (options.user == User::stranger) {
        fs::permissions(m_support, fs::perms(0555));
    }
    Result result = start(script, input, options)->result();
    fs::permissions(m_support, mode);
    return result;
}

} // namespace veslora::test
