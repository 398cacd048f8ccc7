// SPDX-License-Identifier: MIT
// Writes down what the program says of itself while it lives, from whichever thread. The last one made hears;
// the categories are as they were once it goes.
#pragma once

#include "VesloraUI/Platform/Logs.h"

#include <cstring>
#include <mutex>
#include <ostream>
#include <string>
#include <vector>

namespace veslora::testing {

class LogRecorder {
  public:
    struct Line {
        QtMsgType type = QtDebugMsg;
        std::string category;
        std::string text;
        bool operator==(const Line&) const = default;
    };
    enum class Categories {
        on,       ///< as by "--verbose"
        byDefault ///< as in a program that nobody asked to speak
    };

    explicit LogRecorder(Categories categories = Categories::on)
        : m_former(qInstallMessageHandler(&LogRecorder::take)) {
        current() = this;
        if (categories == Categories::on) {
            Logs::beVerbose();
        }
    }
    LogRecorder(const LogRecorder&) = delete;
    LogRecorder& operator=(const LogRecorder&) = delete;
    ~LogRecorder() {
        QLoggingCategory::setFilterRules(QString());
        qInstallMessageHandler(m_former);
        current() = nullptr;
    }

    /// The program's own lines, without those of its libraries.
    [[nodiscard]] std::vector<Line> lines() const {
        const std::lock_guard lock(m_mutex);
        return m_lines;
    }
    [[nodiscard]] std::vector<Line> warnings() const { return of(QtWarningMsg); }
    [[nodiscard]] std::vector<Line> decisions() const { return of(QtInfoMsg); }
    void clear() {
        const std::lock_guard lock(m_mutex);
        m_lines.clear();
    }

  private:
    static LogRecorder*& current() {
        static LogRecorder* recorder = nullptr;
        return recorder;
    }

    static void take(QtMsgType type, const QMessageLogContext& context, const QString& message) {
        LogRecorder& self = *current();
        if (context.category == nullptr || std::strncmp(context.category, "veslora.", 8) != 0) {
            if (self.m_former != nullptr) {
                self.m_former(type, context, message);
            }
            return;
        }
        const std::lock_guard lock(self.m_mutex);
        self.m_lines.push_back({type, context.category, message.toStdString()});
    }

    [[nodiscard]] std::vector<Line> of(QtMsgType type) const {
        std::vector<Line> result;
        for (const Line& line : lines()) {
            if (line.type == type) {
                result.push_back(line);
            }
        }
        return result;
    }

    mutable std::mutex m_mutex;
    std::vector<Line> m_lines;
    QtMessageHandler m_former = nullptr;
};

/// For a test's message.
inline void PrintTo(const LogRecorder::Line& line,
                    std::ostream* out) { // NOLINT(readability-identifier-naming)
    *out << line.category << ": " << line.text;
}

} // namespace veslora::testing
