// SPDX-License-Identifier: MIT
// The signals that ask a program to end, turned into a call on the main thread, so that it ends in its own
// order.
#pragma once

#include <QObject>
#include <QSocketNotifier>

#include <functional>
#include <memory>

namespace veslora {

/// While one of these lives, SIGTERM, SIGINT and SIGHUP no longer end the program. There may be one at a
/// time.
class Signals final : public QObject {
    Q_OBJECT

  public:
    /// `endAsked` is called once, by the event loop, however many of the signals come.
    explicit Signals(std::function<void()> endAsked);
    /// Gives the signals their former meaning back.
    ~Signals() override;
    Signals(const Signals&) = delete;
    Signals& operator=(const Signals&) = delete;

  private:
    void signalArrived();

    std::function<void()> m_endAsked;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace veslora
