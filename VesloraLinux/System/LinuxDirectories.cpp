// SPDX-License-Identifier: MIT
#include "VesloraLinux/System/LinuxDirectories.h"

#include <QByteArray>

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <climits>

namespace veslora::LinuxDirectories {
namespace {

std::optional<std::string> absolute(std::optional<std::string> path) {
    if (!path || path->empty() || path->front() != '/') {
        return std::nullopt;
    }
    while (path->size() > 1 && path->back() == '/') {
        path->pop_back();
    }
    return path;
}

std::string below(const std::string& directory, const char* name) {
    return (directory == "/" ? "" : directory) + "/" + name;
}

std::string homeOfUser() {
    passwd user{};
    passwd* found = nullptr;
    char texts[16384];
    getpwuid_r(geteuid(), &user, texts, sizeof texts, &found);
    return found != nullptr ? absolute(std::string(user.pw_dir)).value_or("/") : "/";
}

bool isOwnDirectory(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode) && status.st_uid == geteuid();
}

std::string directoryOfProgram() {
    const std::string program = executable();
    const std::size_t slash = program.rfind('/');
    return slash == std::string::npos || slash == 0 ? "/" : program.substr(0, slash);
}

} // namespace

std::string executable() {
    char path[PATH_MAX];
    const ssize_t length = readlink("/proc/self/exe", path, sizeof path);
    return {path, length > 0 ? static_cast<std::size_t>(length) : 0};
}

Directories find(const Environment& environment) {
    const auto variable = [&environment](const char* name) { return absolute(environment(name)); };
    Directories result;
    const auto home = variable("HOME");
    result.home = home ? *home : homeOfUser();
    result.support = below(variable("XDG_DATA_HOME").value_or(below(result.home, ".local/share")), "Veslora");
    const auto runtime = variable("XDG_RUNTIME_DIR");
    result.runtime = runtime && isOwnDirectory(*runtime) ? below(*runtime, "veslora") : result.support;
    result.configuration =
        below(variable("XDG_CONFIG_HOME").value_or(below(result.home, ".config")), "Veslora");
    result.cache = below(variable("XDG_CACHE_HOME").value_or(below(result.home, ".cache")), "Veslora");
    result.claude = variable("CLAUDE_CONFIG_DIR").value_or(below(result.home, ".claude"));
    result.codex = variable("CODEX_HOME").value_or(below(result.home, ".codex"));
    result.executables = directoryOfProgram();
    return result;
}

std::optional<std::string> processEnvironment(const std::string& name) {
    return qEnvironmentVariableIsSet(name.c_str()) ? std::optional(qgetenv(name.c_str()).toStdString())
                                                   : std::nullopt;
}

} // namespace veslora::LinuxDirectories
