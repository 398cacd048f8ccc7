// SPDX-License-Identifier: MIT
// What has to be done with the program's own code: installing the hooks into a home, and measuring a refresh,
// the judgement of texts and the metronome. A program of its own, since the harness must not map the
// toolkit's libraries: the measured program would then share them, and seem smaller than it is.
#include "VesloraLinux/System/PosixFiles.h"
#include "VesloraUI/Claude/Hooks/ClaudeHooks.h"
#include "VesloraUI/Claude/Spool/SupportDirectory.h"
#include "bench/Report.h"
#include "bench/UsageCorpus.h"
#include "bench/inside/MetronomeBench.h"
#include "bench/inside/RefreshBench.h"
#include "bench/inside/TextBench.h"
#include "bench/inside/UsageRun.h"

#include <cstdio>
#include <exception>
#include <filesystem>
#include <vector>

namespace {

using namespace veslora;

std::string executables() {
    return std::filesystem::read_symlink("/proc/self/exe").parent_path().string();
}

int installHooks(const std::string& home, const std::string& runtime) {
    PosixFiles files;
    SupportDirectory support(files, home + "/.local/share/Veslora", runtime + "/veslora");
    ClaudeHooks hooks(files, support, home + "/.claude/settings.json", executables());
    hooks.install();
    return hooks.state().areInstalled ? 0 : 1;
}

int measureRefresh(bool isShort) {
    bench::Report report(!isShort);
    bench::measureRefresh(report, executables(), isShort);
    return report.isGood() ? 0 : 1;
}

int measureText(bool isShort) {
    bench::Report report(!isShort);
    bench::measureText(report, isShort);
    return report.isGood() ? 0 : 1;
}

int measureMetronome(bool isShort) {
    bench::Report report(!isShort);
    bench::measureMetronome(report, executables(), isShort);
    return report.isGood() ? 0 : 1;
}

} // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    try {
        if (arguments.size() == 3 && arguments[0] == "hooks") {
            return installHooks(arguments[1], arguments[2]);
        }
        if (arguments.size() == 3 && arguments[0] == "corpus") {
            static_cast<void>(bench::makeCorpus(arguments[1], {.files = std::stoul(arguments[2])}));
            return 0;
        }
        if (arguments.size() >= 2 && arguments[0] == "usage") {
            return bench::runUsage(arguments[1], arguments.size() > 2 ? arguments[2] : "") ? 0 : 1;
        }
        const bool isShort = arguments.size() == 2 && arguments[1] == "--smoke";
        if (!arguments.empty() && arguments[0] == "refresh") {
            return measureRefresh(isShort);
        }
        if (!arguments.empty() && arguments[0] == "text") {
            return measureText(isShort);
        }
        if (!arguments.empty() && arguments[0] == "metronome") {
            return measureMetronome(isShort);
        }
    } catch (const std::exception& error) {
        std::fprintf(stderr, "bench: %s\n", error.what());
        return 1;
    }
    std::fputs("usage: veslora-bench-inside hooks HOME RUNTIME | usage FOLDER [FILE] | corpus FOLDER FILES | "
               "refresh [--smoke] | text [--smoke] | metronome [--smoke]\n",
               stderr);
    return 2;
}
