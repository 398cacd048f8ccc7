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
void measureInside(const Bench& bench, const std::string& what) {
    std::vector<std::string> words{bench.executables + "/veslora-bench-inside", what};
    if (bench.isShort) {
        words.emplace_back("--smoke");
    }
    const auto arguments = argumentsOf(words);
    pid_t process = -1;
    int status = -1;
    if (posix_spawn(&process, arguments.front(), nullptr, nullptr, arguments.data(), environ) != 0 ||
        waitpid(process, &status, 0) != process) {
        throw std::runtime_error(what + " can't be measured");
    }
    bench.report.addOthers(status == 0);
}

void measureRefresh(const Bench& bench) {
    measureInside(bench, "refresh");
}

void measureText(const Bench& bench) {
    measureInside(bench, "text");
}

void measureMetronome(const Bench& bench) {
    measureInside(bench, "metronome");
}

} // namespace

std::span<const Measurement> measurements() {
    static const std::vector<Measurement> all{
        {"start", {"start_to_first_frame", "start_bare", "start_to_bare"}, measureStart},
        {"idle",
         {"idle_pss", "idle_rss", "idle_bare_pss", "idle_cpu", "idle_wakeups", "idle_disk_writes",
          "idle_frames", "idle_adapter_pss", "idle_adapter_wakes"},
         measureIdle},
        {"idle_used", {"idle_used_30_pss", "idle_used_100_pss"}, measureUsedIdle},
        {"prompts",
         {"prompt_filed_to_first_frame_p50", "prompt_filed_to_first_frame_p95", "prompt_filed_to_frame_p50",
          "prompt_filed_to_frame_p95"},
         measurePrompts},
        {"answers", {"release_to_answer_p50", "release_to_answer_p95"}, measureAnswers},
        {"event_script", {"event_script_ms", "event_script_ratio"}, measureEventScript},
        {"refresh", {"refresh_large", "refresh_unchanged"}, measureRefresh},
        {"text", {"text_first", "text_usual_p50", "text_usual_p95", "text_8_mb"}, measureText},
        {"usage",
         {"usage_100_load",
          "usage_100_grep",
          "usage_100_cat",
          "usage_100_load_to_grep",
          "usage_100_memory",
          "usage_100_extra_memory",
          "usage_100_tally",
          "usage_100_ccusage",
          "usage_100_ccusage_cpu",
          "usage_100_ccusage_memory",
          "usage_100_times_as_fast",
          "usage_30_load",
          "usage_30_load_cpu",
          "usage_30_grep",
          "usage_30_cat",
          "usage_30_load_to_grep",
          "usage_30_memory",
          "usage_30_extra_memory",
          "usage_30_tally",
          "usage_30_ccusage",
          "usage_30_ccusage_cpu",
          "usage_30_ccusage_memory",
          "usage_30_times_as_fast",
          "usage_1_load",
          "usage_1_load_cpu",
          "usage_1_grep",
          "usage_1_cat",
          "usage_1_load_to_grep",
          "usage_1_memory",
          "usage_1_extra_memory",
          "usage_1_tally",
          "usage_1_ccusage",
          "usage_1_ccusage_cpu",
          "usage_1_ccusage_memory",
          "usage_1_times_as_fast",
          "usage_cold_load",
          "usage_cold_cat",
          "usage_refresh_unchanged",
          "usage_refresh_appended",
          "usage_appended_to_figure_p95",
          "usage_1k_files_load",
          "usage_1k_files_refresh",
          "usage_10k_files_load",
          "usage_10k_files_refresh",
          "usage_100k_files_load",
          "usage_100k_files_refresh",
          "usage_difference_to_ccusage"},
         measureUsage},
        {"mouse_far", {"mouse_far"}, measureFarMouse},
        {"opening", {"opening_spring_fps", "opening_spring_cpu"}, measureOpening},
        {"dragging", {"dragging_fps", "dragging_cpu"}, measureDragging},
        {"paging", {"page_flip_fps", "page_flip_cpu"}, measurePaging},
        {"activities",
         {"open_ticking_cpu", "working_cpu", "working_fps", "alert_cpu", "alert_fps"},
         measureActivities},
        {"widgets",
         {"open_quiet_cpu", "open_quiet_fps", "open_quiet_bursts", "open_quiet_burst_p95", "open_awake_cpu",
          "open_awake_fps", "open_awake_bursts", "open_awake_burst_p95", "open_timer_cpu", "open_timer_fps",
          "open_timer_bursts", "open_timer_burst_p95", "open_timer25_cpu", "open_timer25_fps",
          "open_timer25_bursts", "open_timer25_burst_p95"},
         measureWidgets},
        {"music",
         {"music_bars_cpu", "music_bars_fps", "music_bars_largest_frame", "music_paused_frames",
          "music_change_to_frame_p50", "music_change_to_frame_p95", "music_spotify_to_frame_p50",
          "music_spotify_to_frame_p95", "music_mpv_to_frame_p50", "music_mpv_to_frame_max"},
         measureMusic},
        {"metronome_use",
         {"metronome_open_cpu", "metronome_open_fps", "metronome_wings_cpu", "metronome_wings_fps",
          "metronome_wings_wakeups", "metronome_wings_server_wakeups"},
         measureMetronomeUse},
        {"metronome_light",
         {"metronome_light_error_p95", "metronome_light_error_max", "metronome_light_spread",
          "metronome_light_median", "metronome_light_beats", "metronome_light_missing"},
         measureMetronomeLight},
        {"timer_wings",
         {"timer_wings_cpu", "timer_wings_fps", "timer_wings_bursts", "timer_wings_burst_p95",
          "timer_wings_area_p50", "timer_wings_area_most", "timer_wings_outside"},
         measureTimerWings},
        {"sampler", {"closed_opens", "closed_sampler_reads", "open_sampler_interval"}, measureSampler},
        {"media_rest",
         {"media_pss", "media_own", "media_paused_wakeups", "media_playing_wakeups"},
         measureMediaRest},
        {"media_changes",
         {"media_change_to_line_p50", "media_change_to_line_p95", "media_change_to_line_pss",
          "media_playerctl_p50", "media_playerctl_p95", "media_playerctl_pss"},
         measureMediaChanges},
        {"metronome",
         {"metronome_pulse_idle_error",
          "metronome_pulse_idle_missing",
          "metronome_pulse_idle_heard",
          "metronome_pulse_idle_start",
          "metronome_pulse_idle_underruns",
          "metronome_pulse_idle_position_spread",
          "metronome_pulse_idle_position_range",
          "metronome_pulse_idle_position_offset",
          "metronome_pulse_load_error",
          "metronome_pulse_load_missing",
          "metronome_pulse_load_heard",
          "metronome_pulse_load_start",
          "metronome_pulse_load_underruns",
          "metronome_pulse_blocked_error",
          "metronome_pulse_blocked_missing",
          "metronome_pulse_blocked_heard",
          "metronome_pulse_blocked_start",
          "metronome_pulse_blocked_underruns",
          "metronome_pipewire_idle_error",
          "metronome_pipewire_idle_missing",
          "metronome_pipewire_idle_heard",
          "metronome_pipewire_idle_start",
          "metronome_pipewire_idle_underruns",
          "metronome_pipewire_idle_position_spread",
          "metronome_pipewire_idle_position_range",
          "metronome_pipewire_idle_position_offset",
          "metronome_pipewire_load_error",
          "metronome_pipewire_load_missing",
          "metronome_pipewire_load_heard",
          "metronome_pipewire_load_start",
          "metronome_pipewire_load_underruns",
          "metronome_pipewire_blocked_error",
          "metronome_pipewire_blocked_missing",
          "metronome_pipewire_blocked_heard",
          "metronome_pipewire_blocked_start",
          "metronome_pipewire_blocked_underruns",
          "metronome_gtick_error",
          "metronome_gtick_drift",
          "metronome_gtick_heard",
          "metronome_gtick_missing"},
         measureMetronome},
        {"growth_prompts", {"growth_prompts"}, measurePromptGrowth},
        {"growth_opens", {"growth_opens"}, measureOpenGrowth},
        {"growth_settings", {"settings_open", "settings_first", "growth_settings"}, measureSettingsGrowth},
    };
    return all;
}

} // namespace veslora::bench
