// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/Monitors/FrontTerminal.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace veslora {

namespace {

/// What is asked about one session; it ends with the task that stands for it, and its own tasks with it.
struct Question {
    std::function<void(bool)> done;
    std::vector<Task> parts;
    std::size_t open = 0; ///< parts without an answer
    bool isInFront = false;
};

} // namespace

FrontTerminal::Look FrontTerminal::look(const SessionPlace& place) const {
    const bool isInFront =
        std::ranges::any_of(place.processes, [this](std::int32_t pid) { return m_hosts.isFrontmost(pid); });
    if (isInFront) {
        return {true, {}};
    }
    Look result;
    std::ranges::copy_if(place.processes, std::back_inserter(result.multiplexed), [this](std::int32_t pid) {
        return m_multiplexer.mayHold(pid) && !m_hosts.hostAppOf(pid);
    });
    return result;
}

Task FrontTerminal::ask(const std::vector<std::int32_t>& multiplexed, const std::optional<std::string>& pane,
                        std::function<void(bool)> done) {
    const auto question = std::make_shared<Question>();
    question->done = std::move(done);
    question->open = multiplexed.size();
    const auto state = std::make_shared<TaskState>();
    state->run = [question] { question->done(question->isInFront); };

    // Both are only lent to the parts: the task's owner alone keeps them.
    const auto answered = [this, lent = question.get(),
                           weak = std::weak_ptr(state)](const TerminalMultiplexer::Clients& clients) {
        lent->isInFront = lent->isInFront || std::ranges::any_of(clients, [this](std::int32_t client) {
                              return m_hosts.isFrontmost(client);
                          });
        const bool isDecided = --lent->open == 0 || lent->isInFront;
        const auto whole = weak.lock();
        if (isDecided && whole) {
            if (const auto run = std::exchange(whole->run, nullptr)) {
                run();
            }
        }
    };
    for (const std::int32_t pid : multiplexed) {
        question->parts.push_back(m_multiplexer.findClients(pid, pane, answered));
    }
    return Task(state);
}

} // namespace veslora
