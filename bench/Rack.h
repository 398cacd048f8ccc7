// SPDX-License-Identifier: MIT
// Where the widgets of the open rack lie on the stage, and the keys in them that a measurement presses.
#pragma once

#include "VesloraCore/Widgets/WidgetLayout.h"
#include "bench/Island.h"
#include "bench/Stage.h"

#include <string>

namespace veslora::bench {

class Rack {
  public:
    /// `widgets` is a layout as the settings keep it.
    explicit Rack(const Stage& stage, const std::string& widgets);

    /// What the settings file has to hold.
    [[nodiscard]] std::string settings() const;

    enum class Length { shortest, longest }; ///< of the keys: 5 and 25 minutes
    /// Presses a length and the key that starts the wide timer, in the open rack, and waits until it runs.
    void startTimer(Length length = Length::shortest) const;
    /// Presses the key that starts the wide metronome and waits until a beat shows.
    void startMetronome() const;
    /// Presses the key for two hours in the small keep-awake widget and waits until the session shows.
    void startKeepAwake() const;

  private:
    [[nodiscard]] Area moduleOf(WidgetID id) const;
    void press(Place place) const;

    const Display& m_display;
    WidgetLayout m_layout;
};

} // namespace veslora::bench
