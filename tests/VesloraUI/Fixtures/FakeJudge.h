// SPDX-License-Identifier: MIT
// A judge of presses that does as a test says and remembers what it was asked.
#pragma once

#include "VesloraUI/Style/PressJudge.h"

#include <cstdint>
#include <vector>

namespace veslora {

/// Lets everything count, or nothing.
class FakeJudge final : public PressJudge {
  public:
    [[nodiscard]] bool isArmed() const override { return m_isArmed; }
    void setArmed(bool isArmed) {
        m_isArmed = isArmed;
        emit isArmedChanged();
    }
    void press(std::uint32_t eventTime) override { presses.push_back(eventTime); }
    [[nodiscard]] bool release(std::uint32_t eventTime) override {
        releases.push_back(eventTime);
        return counts;
    }
    [[nodiscard]] bool act() override { return counts; }

    bool counts = true;
    std::vector<std::uint32_t> presses;
    std::vector<std::uint32_t> releases;

  private:
    bool m_isArmed = true;
};

} // namespace veslora
