// SPDX-License-Identifier: MIT
// Keeps the machine awake by whatever the desktop offers: asks one way after the other until all that is
// needed is granted. Main thread only.
#pragma once

#include "VesloraLinux/Shared/Inhibitor.h"
#include "VesloraUI/Platform/PowerAsserting.h"
#include "VesloraUI/Platform/Scheduler.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace veslora {

/// A way that refuses is not asked again before the next hold, unless another comes to serve it: a service
/// that starts after us, or again, is then asked, and takes over from the ways that come after it. One that
/// does not answer is passed over in time, and takes over too should its answer still come. What was held
/// goes only once what replaces it is there, since a desktop that has been idle for long would sleep in
/// between.
class PowerAssertions final : public PowerAsserting {
  public:
    /// Seconds to wait for the answer of one way before asking the next.
    static constexpr double patience = 5;

    /// `ways` in the order in which they are to be asked; null ones are left out.
    PowerAssertions(Scheduler& scheduler, std::vector<std::unique_ptr<Inhibitor>> ways);
    ~PowerAssertions() override;
    PowerAssertions(const PowerAssertions&) = delete;
    PowerAssertions& operator=(const PowerAssertions&) = delete;

    void apply(const std::optional<KeepAwakeHold>& hold) override;

  private:
    enum class Answer { none, awaited, late, granted, refused };

    struct Way {
        std::unique_ptr<Inhibitor> inhibitor;
        Answer answer = Answer::none;
        std::uint64_t request = 0; ///< the one whose answer counts
        std::unique_ptr<Inhibition> inhibition;
        Task wait; ///< for its answer
    };

    void walk();
    void ask(Way& way, AwakeNeeds needs);
    void answered(Way& way, std::uint64_t request, std::unique_ptr<Inhibition> inhibition);
    void forget(Way& way);
    void ownerChanged(Way& way);
    void losePatience(Way& way);

    Scheduler& m_scheduler;
    std::vector<Way> m_ways;
    std::optional<KeepAwakeHold> m_hold;
    std::vector<std::unique_ptr<Inhibition>> m_outgoing; ///< until what replaces them is there
    std::uint64_t m_requests = 0;
};

} // namespace veslora
