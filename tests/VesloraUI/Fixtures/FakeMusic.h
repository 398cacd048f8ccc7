// SPDX-License-Identifier: MIT
// Players that obey a test: every seam of the music, held in memory.
#pragma once

#include "VesloraUI/Platform/AdapterProcess.h"
#include "VesloraUI/Platform/AppOpening.h"
#include "VesloraUI/Platform/ArtworkLoading.h"
#include "VesloraUI/Platform/AutomationPermission.h"
#include "VesloraUI/Platform/Scheduler.h"
#include "VesloraUI/Platform/ScriptRunning.h"
#include "VesloraUI/Platform/SpotifyNotifications.h"

#include <map>
#include <set>
#include <string>
#include <vector>

namespace veslora {

/// Tells what a test has Spotify tell, once somebody listens.
class FakeSpotify final : public SpotifyNotifications {
    Q_OBJECT

  public:
    int starts = 0;

    void start() override { ++starts; }
    void tell(const SpotifyNotification::UserInfo& userInfo) {
        if (starts > 0) {
            emit playbackStateChanged(userInfo);
        }
    }
};

/// Gives the results that a test has put into it, as they are at the moment of the answer.
class FakeScripts final : public ScriptRunning {
  public:
    std::map<std::string, Result> results; ///< by script; any other fails
    double answerTime = 0;                 ///< seconds
    std::vector<std::string> ran;

    explicit FakeScripts(Scheduler& scheduler) : m_scheduler(scheduler) {}

    [[nodiscard]] Task run(const std::string& script, std::function<void(const Result&)> done) override {
        ran.push_back(script);
        return m_scheduler.after(answerTime, [this, script, done = std::move(done)] {
            const auto found = results.find(script);
            done(found == results.end() ? Result(MusicError::failed) : found->second);
        });
    }

  private:
    Scheduler& m_scheduler;
};

/// A helper that prints and ends when a test has it do so.
class FakeAdapter final : public AdapterProcess {
  public:
    bool canStart = true;
    int starts = 0; ///< attempts included
    int stops = 0;
    std::vector<AdapterCommand> sent;

    [[nodiscard]] bool isRunning() const { return static_cast<bool>(m_onLine); }
    [[nodiscard]] bool start(LineHandler onLine, ExitHandler onExit) override {
        ++starts;
        if (canStart) {
            m_onLine = std::move(onLine);
            m_onExit = std::move(onExit);
        }
        return canStart;
    }
    void stop() override {
        ++stops;
        m_onLine = nullptr;
        m_onExit = nullptr;
    }
    void send(AdapterCommand command) override { sent.push_back(command); }

    /// Prints a line, if it runs.
    void print(const std::string& line) const {
        if (m_onLine) {
            m_onLine(line);
        }
    }
    /// Ends by itself, if it runs.
    void exit(std::int32_t status) {
        m_onLine = nullptr;
        if (const auto onExit = std::exchange(m_onExit, nullptr)) {
            onExit(status);
        }
    }

  private:
    LineHandler m_onLine;
    ExitHandler m_onExit;
};

/// Has the images that a test has put into it.
class FakeArtwork final : public ArtworkLoading {
  public:
    std::map<std::string, QImage> images; ///< by address; any other gives none
    double loadTime = 0;                  ///< seconds
    std::vector<std::string> loaded;

    explicit FakeArtwork(Scheduler& scheduler) : m_scheduler(scheduler) {}

    [[nodiscard]] Task load(const QUrl& url, std::function<void(const QImage&)> done) override {
        const std::string address = url.toString().toStdString();
        loaded.push_back(address);
        return m_scheduler.after(loadTime,
                                 [this, address, done = std::move(done)] { done(images[address]); });
    }

  private:
    Scheduler& m_scheduler;
};

class RecordingApps final : public AppOpening {
  public:
    std::vector<std::string> opened;
    void open(const std::string& bundleID) override { opened.push_back(bundleID); }
};

/// Says what a test has put into it, of any application.
class FakeAutomation final : public AutomationPermission {
  public:
    [[nodiscard]] AutomationStatus status(const std::string& bundleID) override {
        asked.insert(bundleID);
        return m_status;
    }
    void change(AutomationStatus status) {
        m_status = status;
        emit statusChanged();
    }
    std::set<std::string> asked;

  private:
    AutomationStatus m_status = AutomationStatus::appNotRunning;
};

} // namespace veslora
