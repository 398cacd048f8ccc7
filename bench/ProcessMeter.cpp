// SPDX-License-Identifier: MIT
// The fields are those of proc(5).
#include "bench/ProcessMeter.h"

#include "bench/Clock.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <string>

namespace veslora::bench {

namespace {

std::string textOf(const std::filesystem::path& path) {
    std::ifstream file(path);
    std::ostringstream text;
    text << file.rdbuf();
    if (!file) {
        throw std::runtime_error("the kernel does not tell " + path.string());
    }
    return text.str();
}

/// The number after "key:" at the beginning of a line.
std::uint64_t numberIn(const std::string& text, const std::string& key) {
    const std::size_t at = ("\n" + text).find("\n" + key + ":");
    if (at == std::string::npos) {
        throw std::runtime_error("the kernel does not tell " + key);
    }
    return std::stoull(text.substr(at + key.size() + 1));
}

/// How many KB of the toolkit's libraries, plugins and tables are put down to others. Each mapping is a line
/// that ends with its file, and lines of counts.
double toolkitShares(const std::string& mappings) {
    std::istringstream lines(mappings);
    std::string line;
    bool isToolkit = false;
    double total = 0;
    while (std::getline(lines, line)) {
        std::istringstream words(line);
        std::string key;
        double count = 0;
        words >> key;
        if (key.find('-') != std::string::npos) {
            isToolkit = line.find("libQt6") != std::string::npos || line.find("/qt6/") != std::string::npos ||
                        line.find("libicu") != std::string::npos;
        } else if (isToolkit && (key == "Rss:" || key == "Pss:") && words >> count) {
            total += key == "Rss:" ? count : -count;
        }
    }
    return total;
}

} // namespace

ProcessMeter::ProcessMeter(pid_t process) : m_process(process) {
    if (clock_getcpuclockid(process, &m_clock) != 0) {
        throw std::runtime_error("no such process");
    }
}

double ProcessMeter::processorTime() const {
    timespec time{};
    if (clock_gettime(m_clock, &time) != 0) {
        throw std::runtime_error("the process has ended");
    }
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

std::map<pid_t, std::uint64_t> ProcessMeter::sleeps() const {
    std::map<pid_t, std::uint64_t> result;
    for (const auto& thread :
         std::filesystem::directory_iterator("/proc/" + std::to_string(m_process) + "/task")) {
        std::ifstream status(thread.path() / "status");
        const std::string text{std::istreambuf_iterator<char>(status), {}};
        // One that has just ended has nothing to tell.
        if (!text.empty()) {
            result[std::stoi(thread.path().filename())] = numberIn(text, "voluntary_ctxt_switches");
        }
    }
    return result;
}

std::uint64_t ProcessMeter::wakeUpsIn(double seconds) const {
    std::uint64_t total = 0;
    auto before = sleeps();
    const double end = monotonicNow() + seconds;
    while (monotonicNow() < end) {
        sleepFor(std::min(1.0, end - monotonicNow()));
        auto after = sleeps();
        for (const auto& [thread, count] : after) {
            total += count - before[thread];
        }
        before = std::move(after);
    }
    return total;
}

std::uint64_t ProcessMeter::bytesWritten() const {
    return numberIn(textOf("/proc/" + std::to_string(m_process) + "/io"), "write_bytes");
}

std::uint64_t ProcessMeter::bytesRead() const {
    return numberIn(textOf("/proc/" + std::to_string(m_process) + "/io"), "rchar");
}

Memory ProcessMeter::memory() const {
    const std::string folder = "/proc/" + std::to_string(m_process);
    const std::string text = textOf(folder + "/smaps_rollup");
    const auto megabytes = [&](const char* key) { return static_cast<double>(numberIn(text, key)) / 1024; };
    return {megabytes("Pss") + toolkitShares(textOf(folder + "/smaps")) / 1024, megabytes("Rss"),
            megabytes("Pss_Anon") + megabytes("Pss_Shmem")};
}

} // namespace veslora::bench
