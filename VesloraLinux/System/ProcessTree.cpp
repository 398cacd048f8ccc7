// SPDX-License-Identifier: MIT
#include "VesloraLinux/System/ProcessTree.h"

#include "VesloraLinux/System/FileDescriptor.h"

#include <fcntl.h>

#include <charconv>
#include <string>

namespace veslora::ProcessTree {

std::optional<ProcessStat> parse(std::string_view stat) {
    const std::size_t bracket = stat.rfind(')');
    // After the name: a space, the state's letter, a space, the parent.
    constexpr std::size_t parentOffset = 4;
    if (bracket == std::string_view::npos || stat.size() < bracket + parentOffset + 1 ||
        stat[bracket + 1] != ' ' || stat[bracket + 3] != ' ') {
        return std::nullopt;
    }
    ProcessStat result;
    result.state = stat[bracket + 2];
    const char* const first = stat.data() + bracket + parentOffset;
    const auto parsed = std::from_chars(first, stat.data() + stat.size(), result.parent);
    return parsed.ec == std::errc() ? std::optional(result) : std::nullopt;
}

std::optional<ProcessStat> statOf(std::int32_t pid) {
    const std::string path = "/proc/" + std::to_string(pid) + "/stat";
    const FileDescriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (!file) {
        return std::nullopt;
    }
    // The kernel gives the whole line in one read; the fields that matter lie in its first hundred bytes.
    char text[1024];
    const ssize_t length = read(file.value(), text, sizeof text);
    return length > 0 ? parse({text, static_cast<std::size_t>(length)}) : std::nullopt;
}

} // namespace veslora::ProcessTree
