// SPDX-License-Identifier: MIT
// The folder into which an agent's hook scripts drop one file for each event and request. Main thread only.
#pragma once

#include "VesloraCore/Timestamp.h"
#include "VesloraUI/Claude/Spool/SpoolRound.h"
#include "VesloraUI/Platform/Files.h"
#include "VesloraUI/Platform/Scheduler.h"
#include "VesloraUI/Platform/Trouble.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace veslora {

class SupportDirectory;

/// Takes the files out in their order, oldest first and those of one moment by name, and deletes each once it
/// was taken in. A few small ones are read at once; a large one, and what lies behind it or behind the first
/// few, is read in the background, a portion at a time, so that nothing that anybody drops here holds the
/// main thread.
class AgentSpool {
  public:
    /// An event older than this was left by a hook long ago and is not worth hearing of.
    static constexpr double eventLifetime = 86400;
    [[nodiscard]] static bool isRecent(Timestamp time, Timestamp now) { return time >= now - eventLifetime; }
    /// What is read at once. No more comes between two looks while agents work. Twice these bytes, at most,
    /// are understood in 8 ms, where all of them are numbers that have to be built.
    static constexpr SpoolPortion atOnce = {64, std::size_t{64} << 10, std::size_t{64} << 10};
    /// What is read in the background between two returns to the main thread, which takes in and deletes as
    /// many files at once.
    static constexpr SpoolPortion aside = {512, std::size_t{1} << 20, SpoolRound::payloadCap};

    /// `onNews` is called whenever something was taken in that was read in the background.
    AgentSpool(Scheduler& scheduler, SupportDirectory& support, std::string_view name,
               UnderstandSpoolFile understand, std::function<void()> onNews);
    ~AgentSpool();
    AgentSpool(const AgentSpool&) = delete;
    AgentSpool& operator=(const AgentSpool&) = delete;

    [[nodiscard]] const std::string& path() const { return m_path; }
    void create();

    /// Takes in what there is. What has to be read in the background follows later; until it has, whatever
    /// comes meanwhile waits for its turn.
    void take();
    /// Leaves in the spool what was not taken in yet.
    void stop();

  private:
    void begin();
    void takeIn();
    void readOn();
    void portionWasRead();

    Scheduler& m_scheduler;
    SupportDirectory& m_support;
    std::string m_name;
    std::string m_path;
    UnderstandSpoolFile m_understand;
    std::function<void()> m_onNews;

    std::shared_ptr<SpoolRound> m_round; ///< null unless one goes on
    bool m_hasMore = false;              ///< somebody asked again during the round
    SpoolRound::Stuck m_stuck;           ///< the round's while one goes on
    Task m_reading;
    Timestamp m_lastSweep = distantPast;
    Trouble m_trouble; ///< of opening the folder
};

} // namespace veslora
