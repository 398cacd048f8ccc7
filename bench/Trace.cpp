// SPDX-License-Identifier: MIT
#include "bench/Trace.h"

#include "tests/VesloraLinux/Support/Program.h"

#include <cstdlib>
#include <fstream>
#include <optional>
#include <stdexcept>

namespace veslora::bench {

namespace {

/// Of a line such as `71 1763740800.250000 openat(AT_FDCWD, "/proc/stat", O_RDONLY) = 5`; absent where no
/// path is named.
std::optional<Trace::Opening> openingIn(const std::string& line) {
    const std::size_t time = line.find(' ');
    const std::size_t begin = line.find('"');
    const std::size_t end = begin == std::string::npos ? begin : line.find('"', begin + 1);
    if (time == std::string::npos || end == std::string::npos) {
        return std::nullopt;
    }
    return Trace::Opening{std::strtod(line.c_str() + time, nullptr), line.substr(begin + 1, end - begin - 1)};
}

} // namespace

bool Trace::isAllowed() {
    return testing::Program({"strace", "-o", "/dev/null", "true"}).wait() == 0;
}

std::vector<std::string> Trace::runner() const {
    return {"strace", "-D",          "-f", "-ttt", "-e", "trace=?open,?openat,?openat2",
            "-e",     "signal=none", "-o", m_path};
}

std::vector<Trace::Opening> Trace::openings() const {
    std::ifstream file(m_path);
    std::vector<Opening> found;
    for (std::string line; std::getline(file, line);) {
        if (auto opening = openingIn(line)) {
            found.push_back(std::move(*opening));
        }
    }
    if (found.empty()) {
        throw std::runtime_error("the program can't be traced");
    }
    return found;
}

} // namespace veslora::bench
