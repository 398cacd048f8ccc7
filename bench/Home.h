// SPDX-License-Identifier: MIT
// A user's home for one run of the program: hooks installed, settings, sessions of an agent beside real
// processes, and the spool into which the hook scripts file.
#pragma once

#include "tests/VesloraLinux/Support/Program.h"
#include "tests/VesloraLinux/Support/TemporaryFolder.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace veslora::bench {

class Home {
  public:
    static constexpr std::size_t sessionCount = 2;

    /// Makes it the home of whatever is started from now on. The sessions are idle. `executables` is where
    /// the program and its helper lie; `settings` is what its settings file holds.
    explicit Home(const std::string& executables, const std::string& settings = "{}");
    ~Home();
    Home(const Home&) = delete;
    Home& operator=(const Home&) = delete;

    [[nodiscard]] const std::string& path() const { return m_folder.path(); }
    [[nodiscard]] std::string support() const { return path() + "/.local/share/Veslora"; }
    [[nodiscard]] std::string spool() const { return support() + "/claude-spool"; }
    [[nodiscard]] std::string answers() const { return support() + "/answers"; }

    /// `status` is a word of Claude Code's, such as "busy"; the session came to it now.
    void setSession(std::size_t index, const std::string& status) const;
    [[nodiscard]] static std::string sessionId(std::size_t index);

    /// Files a payload as a hook script does: whole, then moved to its name. Tells when the move began, on
    /// the harness's clock.
    double file(const std::string& name, const std::string& payload) const;
    /// Files a request of the first session to run `command`.
    double fileRequest(const std::string& id, const std::string& command) const;
    /// Files that the first session has run `command`, which answers the request to run it.
    double fileToolDone(const std::string& id, const std::string& command) const;
    /// Files that the user said something to the first session, which answers all its requests.
    double filePrompt(const std::string& id) const;
    [[nodiscard]] bool isTaken(const std::string& name) const;

  private:
    void installHooks(const std::string& executables) const;

    testing::TemporaryFolder m_folder;
    std::string m_runtime;
    std::vector<std::unique_ptr<testing::Program>> m_agents;
};

/// What a hook is given on its standard input.
[[nodiscard]] std::string hookPayload(const std::string& event, const std::string& sessionId,
                                      const std::string& command = {});
/// What Claude Code writes about a session.
[[nodiscard]] std::string sessionFile(const std::string& sessionId, int process, const std::string& status,
                                      double statusSince);

} // namespace veslora::bench
