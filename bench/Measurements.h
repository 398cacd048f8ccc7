// SPDX-License-Identifier: MIT
// Everything that is measured: each function makes one measurement and reports its figures. It throws when it
// comes to none.
#pragma once

#include "bench/Report.h"
#include "bench/Stage.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace veslora::bench {

struct Bench {
    const Stage& stage;
    Report& report;
    bool isShort = false;    ///< only to see that it measures; the figures mean little
    std::string executables; ///< the folder of the program, its helper and the harness

    [[nodiscard]] std::string program() const { return executables + "/veslora"; }
    [[nodiscard]] std::string bare() const { return executables + "/veslora-bench-bare"; }
    /// How often to do something, or for how many seconds.
    template <class Number>
    [[nodiscard]] Number choose(Number full, Number shortened) const {
        return isShort ? shortened : full;
    }
};

struct Measurement {
    std::string_view name;
    std::vector<std::string_view> figures;
    void (*run)(const Bench&);
};

/// In the order in which they are made.
[[nodiscard]] std::span<const Measurement> measurements();

void measureStart(const Bench& bench);
void measureIdle(const Bench& bench);
void measureUsedIdle(const Bench& bench);
void measurePrompts(const Bench& bench);
void measureAnswers(const Bench& bench);
void measureEventScript(const Bench& bench);
void measureFarMouse(const Bench& bench);
void measureOpening(const Bench& bench);
void measureDragging(const Bench& bench);
void measurePaging(const Bench& bench);
void measureActivities(const Bench& bench);
void measureWidgets(const Bench& bench);
void measureTimerWings(const Bench& bench);
void measureMusic(const Bench& bench);
void measureMetronomeUse(const Bench& bench);
void measureMetronomeLight(const Bench& bench);
void measureSampler(const Bench& bench);
void measureMediaRest(const Bench& bench);
void measureMediaChanges(const Bench& bench);
void measureUsage(const Bench& bench);
void measurePromptGrowth(const Bench& bench);
void measureOpenGrowth(const Bench& bench);
void measureSettingsGrowth(const Bench& bench);

} // namespace veslora::bench
