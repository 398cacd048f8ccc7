// SPDX-License-Identifier: MIT
#include "bench/UsageCorpus.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cmath>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <random>
#include <stdexcept>
#include <utility>

namespace veslora::bench {

namespace {

constexpr time_t day = 86'400;

/// Sizes by their rank: 105 KB in the middle, 654 KB at nine tenths, 5.4 MB at 99 hundredths, 87 MB at the
/// end.
std::uint64_t sizeAt(double rank) {
    struct Section {
        double from, to, smallest, largest, bend;
    };
    static constexpr std::array<Section, 4> sections{{{0, 0.5, 2e3, 105e3, 1},
                                                      {0.5, 0.9, 105e3, 654e3, 1.35},
                                                      {0.9, 0.99, 654e3, 5.4e6, 1.35},
                                                      {0.99, 1, 5.4e6, 87e6, 4.5}}};
    for (const Section& section : sections) {
        if (rank <= section.to) {
            const double part = std::pow((rank - section.from) / (section.to - section.from), section.bend);
            return static_cast<std::uint64_t>(section.smallest *
                                              std::pow(section.largest / section.smallest, part));
        }
    }
    return static_cast<std::uint64_t>(sections.back().largest);
}

std::string isoTime(time_t time, int milliseconds) {
    std::tm parts{};
    gmtime_r(&time, &parts);
    std::array<char, 40> text{};
    const std::size_t length = std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%S", &parts);
    return std::string(text.data(), length) + "." + std::to_string(1000 + milliseconds).substr(1) + "Z";
}

std::string usage(const ClaudeTokenTotals& totals) {
    return R"({"input_tokens":)" + std::to_string(totals.input) + R"(,"cache_creation_input_tokens":)" +
           std::to_string(totals.cacheWrite) + R"(,"cache_read_input_tokens":)" +
           std::to_string(totals.cacheRead) + R"(,"output_tokens":)" + std::to_string(totals.output) +
           R"(,"server_tool_use":{"web_search_requests":0},"service_tier":"standard"})";
}

class Writer {
  public:
    Writer(unsigned seed, bool doRepeatsAgree) : m_random(seed), m_doRepeatsAgree(doRepeatsAgree) {
        static constexpr std::array<const char*, 16> words{
            "return ",        "value ",    "\\n    ", "if (found) ", "\\\"usage\\\": ",
            "const auto& ",   "tests/",    "é ",      "the ",        "request",
            " of ",           "\\\\path ", "12345 ",  "\\t",         "{} ",
            "a line of text "};
        for (int i = 0; i < 512; ++i) {
            std::string fragment;
            while (fragment.size() < 120) {
                fragment += words.at(m_random() % words.size());
            }
            m_fragments.push_back(std::move(fragment));
        }
    }

    /// About `size` bytes of lines, dated from `begin` to `end`.
    std::string transcript(std::uint64_t size, time_t begin, time_t end, const std::string& session) {
        m_session = session;
        std::string text;
        text.reserve(size + 200'000);
        while (text.size() < size) {
            const double part = static_cast<double>(text.size()) / static_cast<double>(size);
            m_time = begin + static_cast<time_t>(part * static_cast<double>(end - begin));
            turn(text);
        }
        return text;
    }
    /// What the turns came to since this was last asked.
    ClaudeTokenTotals takeTotals() { return std::exchange(m_sum, TokenSum()).totals(); }

  private:
    void turn(std::string& text) {
        common(text, "user");
        text += R"("message":{"role":"user","content":[{"type":"tool_result","content":")";
        // One in forty is a file that was read whole.
        words(text, m_random() % 40 == 0 ? 20'000 + m_random() % 80'000 : 500 + m_random() % 5'000);
        text += R"("}]},"toolUseResult":{"stdout":")";
        words(text, 200 + m_random() % 2'000);
        text += "\"}}\n";
        if (m_random() % 3 == 0) {
            common(text, "system");
            text += "\"subtype\":\"progress\",\"level\":\"info\"}\n";
        }
        reply(text);
    }
    void reply(std::string& text) {
        const std::string id = "msg_" + std::to_string(++m_messages) + m_session;
        ClaudeTokenTotals totals{
            static_cast<std::int64_t>(m_random() % 2'000), static_cast<std::int64_t>(1 + m_random() % 900),
            static_cast<std::int64_t>(m_random() % 4'000), static_cast<std::int64_t>(m_random() % 150'000)};
        for (auto lines = 1 + m_random() % 3; lines > 0; --lines) {
            if (!m_doRepeatsAgree) {
                totals.output += static_cast<std::int64_t>(m_random() % 100) - 20;
                totals.output = std::max<std::int64_t>(totals.output, 0);
            }
            common(text, "assistant");
            text +=
                R"("message":{"id":")" + id +
                R"(","type":"message","role":"assistant","model":"claude-opus-4-5","content":[{"type":"text","text":")";
            words(text, 100 + m_random() % 1'200);
            text += R"("}],"stop_reason":null,"usage":)" + usage(totals) + R"(},"requestId":"req_)" + id +
                    "\"}\n";
        }
        m_sum.add(totals);
    }
    void common(std::string& text, const char* type) {
        ++m_lines;
        text += R"({"parentUuid":"0b1c2d3e-0000-4000-8000-)" + std::to_string(m_lines) +
                R"(","isSidechain":false,"userType":"external","cwd":"/home/me/project","sessionId":")" +
                m_session + R"(","version":"2.1.329","gitBranch":"main","type":")" + type + R"(","uuid":")" +
                m_session + "-" + std::to_string(m_lines) + R"(","timestamp":")" +
                isoTime(m_time, static_cast<int>(m_lines % 1000)) + "\",";
    }
    void words(std::string& text, std::size_t size) {
        for (const std::size_t end = text.size() + size; text.size() < end;) {
            text += m_fragments.at(m_random() % m_fragments.size());
        }
    }

    std::mt19937 m_random;
    bool m_doRepeatsAgree;
    std::vector<std::string> m_fragments;
    std::string m_session;
    time_t m_time = 0;
    std::uint64_t m_messages = 0;
    std::uint64_t m_lines = 0;
    TokenSum m_sum;
};

void stamp(const std::string& path, time_t time) {
    const std::array<timespec, 2> stamps{timespec{time, 0}, timespec{time, 0}};
    if (utimensat(AT_FDCWD, path.c_str(), stamps.data(), 0) != 0) {
        throw std::runtime_error("a transcript can't be dated");
    }
}

/// Spread evenly over all sizes.
bool isToday(std::size_t index, double share) {
    return std::fmod(static_cast<double>(index) * share, 1.0) + share >= 1.0 - 1e-9;
}

} // namespace

Corpus makeCorpus(const std::string& projects, const CorpusShape& shape) {
    const time_t now = time(nullptr);
    const time_t midnight = now - now % day;
    Corpus corpus;
    TokenSum today;
    Writer writer(1, shape.doRepeatsAgree);
    for (std::size_t index = 0; index < shape.files; ++index) {
        const double rank = (static_cast<double>(index) + 0.5) / static_cast<double>(shape.files);
        const std::string folder = projects + "/-home-me-project-" + std::to_string(index % 100);
        const std::string session = "s" + std::to_string(index);
        // One in five is a subagent's.
        const std::string below = index % 5 == 0 ? "/" + session + "/subagents" : "";
        std::filesystem::create_directories(folder + below);
        const std::string path = folder + below + "/" + session + ".jsonl";
        const std::string text = writer.transcript(
            shape.bytesPerFile != 0 ? shape.bytesPerFile : sizeAt(rank), midnight, now, session);
        today.add(writer.takeTotals());
        std::ofstream(path, std::ios::binary) << text;
        corpus.files.push_back(path);
        corpus.bytes += text.size();
    }
    corpus.today = today.totals();
    touch(corpus, shape.todayShare);
    return corpus;
}

void touch(Corpus& corpus, double todayShare) {
    const time_t now = time(nullptr);
    corpus.todayFiles.clear();
    corpus.todayBytes = 0;
    for (std::size_t index = 0; index < corpus.files.size(); ++index) {
        const bool isOfToday = isToday(index, todayShare);
        stamp(corpus.files[index], isOfToday ? now : now - 3 * day);
        if (isOfToday) {
            corpus.todayFiles.push_back(corpus.files[index]);
            corpus.todayBytes += std::filesystem::file_size(corpus.files[index]);
        }
    }
}

std::string freshLine(const std::string& message, std::int64_t output) {
    return R"({"type":"assistant","timestamp":")" + isoTime(time(nullptr), 0) +
           R"(","requestId":"r","message":{"id":")" + message + R"(","usage":)" + usage({0, output, 0, 0}) +
           "}}\n";
}

bool evict(const std::vector<std::string>& files) {
    bool isDone = true;
    for (const std::string& path : files) {
        const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
        isDone = file >= 0 && fdatasync(file) == 0 && posix_fadvise(file, 0, 0, POSIX_FADV_DONTNEED) == 0 &&
                 isDone;
        close(file);
    }
    return isDone;
}

} // namespace veslora::bench
