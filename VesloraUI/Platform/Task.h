// SPDX-License-Identifier: MIT
// A handle on something that happens later. Lives on the main thread.
#pragma once

#include <functional>
#include <memory>
#include <utility>

namespace veslora {

/// What a handle and its scheduler share. A scheduler keeps one beside each deadline and asks it at that
/// time.
struct TaskState {
    /// What is to be done; empty once the task was cancelled or has ended.
    std::function<void()> run;
};

/// Move-only. Destroying, replacing or cancelling it means that its callback is never called again; replacing
/// it from within its own callback is safe. A default one stands for nothing.
class Task {
  public:
    Task() = default;
    explicit Task(std::shared_ptr<TaskState> state) : m_state(std::move(state)) {}
    Task(Task&& other) noexcept : m_state(std::exchange(other.m_state, nullptr)) {}
    Task& operator=(Task&& other) noexcept {
        if (this != &other) {
            cancel();
            m_state = std::exchange(other.m_state, nullptr);
        }
        return *this;
    }
    Task(const Task&) = delete;
    Task& operator=(const Task&) = delete;
    ~Task() { cancel(); }

    void cancel() {
        // Taken out first: destroying the callback may destroy the owner of this handle.
        const auto state = std::exchange(m_state, nullptr);
        if (state) {
            const auto dropped = std::exchange(state->run, nullptr);
        }
    }
    /// True while the callback may still be called.
    [[nodiscard]] bool isActive() const { return m_state && m_state->run; }

  private:
    std::shared_ptr<TaskState> m_state;
};

} // namespace veslora
