// SPDX-License-Identifier: MIT
// A display of one's own with the pieces that belong on it, for tests and benchmarks. tools/display raises
// them, sees that they are there, and ends them, also when this process is ended by force.
#pragma once

#include "tests/VesloraLinux/Support/Program.h"

#include <string>

namespace veslora::testing {

class PrivateDisplay {
  public:
    /// `size` is width and height in pixels. Throws, as do all others here, when a piece does not start.
    explicit PrivateDisplay(const std::string& size = "1600x900");

    /// What DISPLAY is set to.
    [[nodiscard]] const std::string& name() const { return m_name; }
    /// An empty folder that goes with the display, fit to be a home and a runtime folder.
    [[nodiscard]] const std::string& folder() const { return m_folder; }

    /// One of those that tools/display knows. Returns once it manages windows.
    void startWindowManager(const std::string& name = "openbox") const;
    /// Returns once it owns the screen.
    void startCompositor() const;
    /// Returns its address.
    [[nodiscard]] std::string startBus() const;

    /// Ends the compositor without giving it the time to say goodbye.
    void killCompositor() const;
    /// Ends the display so, under its clients.
    void kill() const;

  private:
    /// Has a request done; gives what is told of it.
    std::string ask(const std::string& request) const;
    /// What follows a word that an answer must begin with.
    [[nodiscard]] std::string answer(const std::string& word) const;

    Program m_program;
    std::string m_name;
    std::string m_folder;
};

} // namespace veslora::testing
