// SPDX-License-Identifier: MIT
// Lines to a reader behind a pipe, who may be slow or gone. Main thread only.
#pragma once

#include <QObject>
#include <QSocketNotifier>

#include <string>

namespace veslora {

class LineOutput : public QObject {
    Q_OBJECT

  public:
    /// Does not own the descriptor and leaves its flags alone, which others may share.
    explicit LineOutput(int descriptor);

    /// Only while it is not busy. Never waits for the reader: what the pipe does not take follows by and by.
    void write(std::string line);
    [[nodiscard]] bool isBusy() const { return !m_waiting.empty(); }

  signals:
    /// It is no longer busy.
    void drained();
    /// Nobody will ever read another line.
    void closed();

  private:
    void flush();

    int m_descriptor;
    QSocketNotifier m_writable;
    QSocketNotifier m_broken;
    std::string m_waiting;
};

} // namespace veslora
