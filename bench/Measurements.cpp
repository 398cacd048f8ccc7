// SPDX-License-Identifier: MIT
#include "bench/Measurements.h"

#include "bench/Arguments.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <stdexcept>

namespace veslora::bench {

namespace {

/// Made by the program beside the harness, which prints the figures itself.
void measureRefresh(const Bench& bench) {
    std::vector<std::string> words{bench.executables + "/veslora-bench-inside", "refresh"};
    if (bench.isShort) {
        words.emplace_back("--smoke");
    }
    const auto arguments = argumentsOf(words);
    pid_t process = -1;
    int status = -1;
    if (posix_spawn(&process, arguments.front(), nullptr, nullptr, arguments.data(), environ) != 0 ||
        waitpid(process, &status, 0) != process) {
        throw std::runtime_error("the refresh can't be measured");
    }
    bench.report.addOthers(status == 0);
}

} // namespace

std::span<const Measurement> measurements() {
    static const std::vector<Measurement> all{
        {"start", {"start_to_first_frame", "start_bare"}, measureStart},
        {"idle",
         {"idle_pss", "idle_rss", "idle_bare_pss", "idle_cpu", "idle_wakeups", "idle_disk_writes",
          "idle_frames"},
         measureIdle},
        {"prompts",
         {"prompt_filed_to_first_frame_p50", "prompt_filed_to_first_frame_p95", "prompt_filed_to_frame_p50",
          "prompt_filed_to_frame_p95"},
         measurePrompts},
        {"answers", {"release_to_answer_p50", "release_to_answer_p95"}, measureAnswers},
        {"event_script", {"event_script_ms", "event_script_ratio"}, measureEventScript},
        {"refresh", {"refresh_large", "refresh_unchanged"}, measureRefresh},
        {"mouse_far", {"mouse_far"}, measureFarMouse},
        {"opening", {"opening_spring_fps", "opening_spring_cpu"}, measureOpening},
        {"activities",
         {"open_ticking_cpu", "working_cpu", "working_fps", "alert_cpu", "alert_fps"},
         measureActivities},
        {"growth_prompts", {"growth_prompts"}, measurePromptGrowth},
        {"growth_opens", {"growth_opens"}, measureOpenGrowth},
    };
    return all;
}

} // namespace veslora::bench
