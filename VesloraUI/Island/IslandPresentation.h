// SPDX-License-Identifier: MIT
// What a closed island shows, judged once for each change of the models or the settings. Everything that
// follows from it reads this one judgement: the state, the zones that take clicks, the sound and whether the
// panel hides. It is there without a screen too. Main thread only.
#pragma once

#include "VesloraCore/Island/ClosedIsland.h"

#include <cstdint>
#include <optional>
#include <set>
#include <string>

namespace veslora {

class Defaults;
class IslandModels;
class TextMeasuring;

struct IslandPresentation {
    ClosedIslandActivity activity;
    std::optional<std::string> requestId; ///< the oldest request that the island may answer
    std::optional<std::string> waitingId; ///< the first session that waits for approval
    std::set<std::string> approvals;      ///< one key for each wait: the session and since when it waits
    bool operator==(const IslandPresentation&) const = default;
};

class PresentationJudge {
  public:
    /// All of them must outlive it.
    PresentationJudge(const IslandModels& models, const Defaults& settings, const TextMeasuring& measuring)
        : m_models(models), m_settings(settings), m_measuring(measuring) {}

    /// Judges as of that moment and keeps the outcome.
    const IslandPresentation& judge(Timestamp now);
    /// The last outcome; an island that shows nothing before the first.
    [[nodiscard]] const IslandPresentation& presentation() const { return m_presentation; }
    /// How often it has judged. A change should cost one judgement.
    [[nodiscard]] std::uint64_t judgements() const { return m_judgements; }

  private:
    const IslandModels& m_models;
    const Defaults& m_settings;
    const TextMeasuring& m_measuring;
    IslandPresentation m_presentation;
    std::uint64_t m_judgements = 0;
};

} // namespace veslora
