// SPDX-License-Identifier: MIT
// Reading and following a heavy user's transcripts, beside the least that reading them can cost and beside
// another program that counts them, `ccusage`.
#include "VesloraCore/Text/Json.h"
#include "bench/Arguments.h"
#include "bench/Clock.h"
#include "bench/Measurements.h"
#include "bench/UsageCorpus.h"
#include "tests/VesloraLinux/Support/TemporaryFolder.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <stdexcept>

namespace veslora::bench {

namespace {

constexpr Range anyTime{0.00001, 600'000};

struct Outcome {
    double milliseconds = 0;
    double processor = 0; ///< milliseconds of all its threads
    double megabytes = 0; ///< at most resident
    std::string output;
};

/// Runs a command to its end. Throws if it fails.
Outcome runToEnd(std::vector<std::string> command, const std::string& outputFile) {
    // The program reads at low priority. On a machine that others use too, the rest must be as low.
    command.insert(command.begin(), {"nice", "-n", "10"});
    const auto arguments = argumentsOf(command);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, outputFile.c_str(),
                                     O_WRONLY | O_CREAT | O_TRUNC, 0600);
    pid_t process = -1;
    int status = -1;
    rusage used{};
    const double start = monotonicNow();
    const int error = posix_spawnp(&process, arguments.front(), &actions, nullptr, arguments.data(), environ);
    if (error == 0) {
        wait4(process, &status, 0, &used);
    }
    const double time = monotonicNow() - start;
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0 || status != 0) {
        throw std::runtime_error(command.front() + " did not run");
    }
    std::ifstream output(outputFile, std::ios::binary);
    return {time * 1000,
            processorMilliseconds(used),
            static_cast<double>(used.ru_maxrss) / 1024,
            {std::istreambuf_iterator<char>(output), std::istreambuf_iterator<char>()}};
}

std::map<std::string, double> figuresOf(const std::string& line) {
    std::map<std::string, double> figures;
    std::istringstream words(line);
    std::string name;
    for (double value = 0; words >> name >> value;) {
        figures[name] = value;
    }
    return figures;
}

/// A corpus, and the commands that read it.
class Reading {
  public:
    Reading(const Bench& bench, const CorpusShape& shape)
        : m_bench(bench), m_projects(m_folder.path("home/.claude/projects")),
          m_corpus(makeCorpus(m_projects, shape)) {}

    Corpus& corpus() { return m_corpus; }

    std::map<std::string, double> ours(const std::string& appendTo = {}) {
        std::vector<std::string> command{m_bench.executables + "/veslora-bench-inside", "usage", m_projects};
        if (!appendTo.empty()) {
            command.push_back(appendTo);
        }
        return figuresOf(runToEnd(std::move(command), output()).output);
    }
    /// grep as people use it for that, over the files of today.
    double grep() { return overToday(R"(xargs -0 grep -c '"usage"' | cat >/dev/null)"); }
    double cat() { return overToday("xargs -0 cat >/dev/null"); }

    Outcome theirs(const std::string& program) {
        setenv("CLAUDE_CONFIG_DIR", m_folder.path("home/.claude").c_str(), 1);
        const time_t now = time(nullptr);
        std::array<char, 16> today{};
        std::strftime(today.data(), today.size(), "%Y%m%d", gmtime(&now));
        return runToEnd(
            {program, "claude", "daily", "--json", "--offline", "--timezone", "UTC", "--since", today.data()},
            output());
    }

  private:
    double overToday(const std::string& command) {
        const std::string list = m_folder.path("list");
        std::ofstream names(list, std::ios::binary);
        for (const std::string& file : m_corpus.todayFiles) {
            names << file << '\0';
        }
        names.close();
        return runToEnd({"sh", "-c", "<\"$0\" " + command, list}, output()).milliseconds;
    }
    [[nodiscard]] std::string output() const { return m_folder.path("output"); }

    const Bench& m_bench;
    testing::TemporaryFolder m_folder;
    std::string m_projects;
    Corpus m_corpus;
};

/// The other program's native form, which tools/bench has installed.
std::string peer(const Bench& bench) {
    std::string program =
        bench.executables + "/../../peer/node_modules/@ccusage/ccusage-linux-x64/bin/ccusage";
    if (!std::filesystem::exists(program)) {
        throw std::runtime_error("ccusage is not installed");
    }
    return program;
}

ClaudeTokenTotals totalsOf(const std::map<std::string, double>& figures) {
    const auto count = [&](const char* name) { return static_cast<std::int64_t>(figures.at(name)); };
    return {count("input"), count("output"), count("cache_write"), count("cache_read")};
}

ClaudeTokenTotals totalsOf(const Outcome& theirs) {
    const auto document = Json::parse(theirs.output);
    const Json* totals = document ? document->objectAt("totals") : nullptr;
    if (!totals) {
        throw std::runtime_error("the other program's report has no totals");
    }
    const auto count = [&](const char* name) {
        const Json* value = totals->find(name);
        return value ? value->integer().value_or(-1) : -1;
    };
    return {count("inputTokens"), count("outputTokens"), count("cacheCreationTokens"),
            count("cacheReadTokens")};
}

void requireTotals(const ClaudeTokenTotals& ours, const ClaudeTokenTotals& expected) {
    if (ours != expected) {
        throw std::runtime_error("the tokens were not counted right: " + std::to_string(ours.total()) +
                                 " instead of " + std::to_string(expected.total()));
    }
}

/// What the programs came to in some rounds.
struct Rounds {
    std::vector<double> loads;
    std::vector<double> processor;
    std::vector<double> greps;
    std::vector<double> cats;
    std::vector<double> grepRatios;
    double memory = 0; ///< the most of all rounds, in MB, as are the next two
    double extra = 0;
    double tally = 0;
    std::vector<double> theirs;
    std::vector<double> theirProcessor;
    std::vector<double> speedUps;
    double theirMemory = 0;
};

/// All of it in turns, so that what disturbs one disturbs the others.
void measureRound(Reading& reading, const std::string& other, Rounds& rounds) {
    const auto ours = reading.ours();
    const double extra = ours.at("extra_kib") / 1024;
    const double tally = ours.at("tally_kib") / 1024;
    rounds.loads.push_back(ours.at("load_ms"));
    rounds.processor.push_back(ours.at("load_cpu_ms"));
    rounds.memory = std::max(rounds.memory, extra + tally);
    rounds.extra = std::max(rounds.extra, extra);
    rounds.tally = std::max(rounds.tally, tally);
    rounds.greps.push_back(reading.grep());
    rounds.cats.push_back(reading.cat());
    rounds.grepRatios.push_back(rounds.loads.back() / rounds.greps.back());
    if (!other.empty()) {
        const Outcome theirs = reading.theirs(other);
        rounds.theirs.push_back(theirs.milliseconds);
        rounds.theirProcessor.push_back(theirs.processor);
        rounds.speedUps.push_back(theirs.processor / rounds.processor.back());
        rounds.theirMemory = theirs.megabytes;
    }
}

void measureShare(const Bench& bench, Reading& reading, double share, const std::string& other) {
    touch(reading.corpus(), share);
    Rounds rounds;
    for (int round = 0; round < bench.choose(7, 1); ++round) {
        measureRound(reading, other, rounds);
    }
    const std::string name = "usage_" + std::to_string(std::lround(share * 100)) + "_";
    const bool isLimited = share > 0.1;
    const auto limit = [&](double value) { return isLimited ? std::optional(value) : std::nullopt; };
    const auto tell = [&](const char* what, double value, const char* unit, std::optional<double> most = {},
                          Range sensible = anyTime) {
        bench.report.add({name + what, value, unit, most, sensible});
    };
    constexpr Range megabytes{-64, 4096};
    tell("load", median(rounds.loads), "ms", share == 1 ? limit(600) : std::nullopt);
    tell("load_cpu", median(rounds.processor), "ms");
    tell("grep", median(rounds.greps), "ms");
    tell("cat", median(rounds.cats), "ms");
    tell("load_to_grep", median(rounds.grepRatios), "times", limit(1.5), {0.001, 1000});
    tell("memory", rounds.memory, "MB", 20, megabytes);
    tell("extra_memory", rounds.extra, "MB", {}, megabytes);
    tell("tally", rounds.tally, "MB", {}, megabytes);
    if (!other.empty()) {
        tell("ccusage", median(rounds.theirs), "ms");
        tell("ccusage_cpu", median(rounds.theirProcessor), "ms");
        tell("ccusage_memory", rounds.theirMemory, "MB", {}, {1, 65536});
        bench.report.add({name + "times_as_fast",
                          median(rounds.speedUps),
                          "times",
                          limit(5),
                          {0.001, 1000},
                          Bound::lower});
    }
}

void measureCold(const Bench& bench, Reading& reading) {
    std::vector<double> loads;
    std::vector<double> cats;
    for (int round = 0; round < bench.choose(3, 1); ++round) {
        if (!evict(reading.corpus().files)) {
            throw std::runtime_error("the page cache can't be emptied");
        }
        loads.push_back(reading.ours().at("load_ms"));
        static_cast<void>(evict(reading.corpus().files));
        cats.push_back(reading.cat());
    }
    bench.report.add({"usage_cold_load", median(loads), "ms", {}, anyTime});
    bench.report.add({"usage_cold_cat", median(cats), "ms", {}, anyTime});
}

void measureFollowing(const Bench& bench, Reading& reading) {
    const auto figures = reading.ours(reading.corpus().todayFiles.back());
    bench.report.add({"usage_refresh_unchanged", figures.at("unchanged_ms"), "ms", 1, anyTime});
    bench.report.add({"usage_refresh_appended", figures.at("appended_refresh_ms"), "ms", {}, anyTime});
    bench.report.add({"usage_appended_to_figure_p95", figures.at("appended_p95_ms"), "ms", 100, anyTime});
}

void measureManyFiles(const Bench& bench) {
    for (const std::size_t thousands : {1, 10, 100}) {
        Reading reading(bench,
                        {.files = thousands * bench.choose<std::size_t>(1000, 10), .bytesPerFile = 4000});
        const auto figures = reading.ours();
        const std::string name = "usage_" + std::to_string(thousands) + "k_files_";
        bench.report.add({name + "load", figures.at("load_ms"), "ms", {}, anyTime});
        bench.report.add({name + "refresh", figures.at("unchanged_ms"), "ms", 1, anyTime});
    }
}

/// Both programs on transcripts in which it does not matter which line of a message is taken.
void measureAgreement(const Bench& bench, const std::string& other) {
    Reading reading(bench, {.files = bench.choose<std::size_t>(400, 20), .doRepeatsAgree = true});
    const ClaudeTokenTotals ours = totalsOf(reading.ours());
    requireTotals(ours, reading.corpus().today);
    const ClaudeTokenTotals theirs = totalsOf(reading.theirs(other));
    const auto difference = static_cast<double>(ours.total() - theirs.total());
    bench.report.add({"usage_difference_to_ccusage", difference, "tokens", 0, {-1e15, 1e15}});
}

} // namespace

void measureUsage(const Bench& bench) {
    setenv("TZ", "UTC", 1);
    // A short run does without, for it may be made where nothing can be installed.
    const std::string other = bench.isShort ? "" : peer(bench);
    {
        Reading reading(bench, {.files = bench.choose<std::size_t>(3142, 30)});
        requireTotals(totalsOf(reading.ours()), reading.corpus().today);
        for (const double share : {1.0, 0.3, 0.01}) {
            measureShare(bench, reading, bench.isShort ? 1.0 : share, other);
        }
        touch(reading.corpus(), bench.isShort ? 1.0 : 0.3);
        measureCold(bench, reading);
        measureFollowing(bench, reading);
    }
    measureManyFiles(bench);
    if (!other.empty()) {
        measureAgreement(bench, other);
    }
}

} // namespace veslora::bench
