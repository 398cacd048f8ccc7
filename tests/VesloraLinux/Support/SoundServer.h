// SPDX-License-Identifier: MIT
// Sound servers of the test's own, without a sound card: what they play into nothing can be recorded. Nothing
// here reaches the servers of the user who runs the tests.
#pragma once

#include "tests/VesloraLinux/Support/PrivateBus.h"
#include "tests/VesloraLinux/Support/Program.h"
#include "tests/VesloraLinux/Support/TemporaryFolder.h"

#include <QByteArray>

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace veslora::testing {

/// An environment in which there is no sound server, and none can be found or started; the former one comes
/// back at the end.
class SoundEnvironment {
  public:
    SoundEnvironment();
    SoundEnvironment(const SoundEnvironment&) = delete;
    SoundEnvironment& operator=(const SoundEnvironment&) = delete;
    ~SoundEnvironment();

    [[nodiscard]] const TemporaryFolder& folder() const { return m_folder; }
    /// Empty takes the variable away.
    void set(const char* variable, const std::string& value);

  private:
    TemporaryFolder m_folder;
    std::map<const char*, QByteArray> m_former; ///< null for a variable that was not there
};

/// Records what a server plays to one of its sinks, at 48000 hertz in one channel, bit for bit.
class Recorder {
  public:
    Recorder(const SoundEnvironment& environment, const std::string& server, const std::string& sink);

    /// Everything so far, from some moment before the constructor returned.
    [[nodiscard]] std::vector<float> samples() const;
    /// Whether `expected` was recorded, each sample as it is: from its first sample that is not 0 on, where
    /// the recording has its first one.
    [[nodiscard]] bool has(const std::vector<float>& expected) const;
    /// Whether anything but silence was recorded.
    [[nodiscard]] bool hasSound() const;

  private:
    std::string m_path;
    std::unique_ptr<Program> m_program;
};

/// A PulseAudio server with the sinks "cap", which is the default one, and "other".
class PulseServer {
  public:
    explicit PulseServer(const SoundEnvironment& environment);

    [[nodiscard]] const std::string& address() const { return m_address; }
    [[nodiscard]] const Program& program() const { return *m_program; }
    /// Ends it by force, as a crash does.
    void crash() { m_program->kill(); }

  private:
    std::string m_address;
    std::unique_ptr<Program> m_program;
};

/// PipeWire alone, as it is where only the screen is shared with it.
class PipeWireDaemon {
  public:
    explicit PipeWireDaemon(SoundEnvironment& environment);

    [[nodiscard]] const Program& program() const { return *m_program; }
    /// Ends it by force, as a crash does.
    void crash() { m_program->kill(); }

  private:
    std::unique_ptr<Program> m_program;
};

/// PipeWire, its session manager and its PulseAudio server, with the sinks "cap", which is the default one,
/// and "other".
class PipeWireServer {
  public:
    explicit PipeWireServer(SoundEnvironment& environment);

    /// Of its PulseAudio server.
    [[nodiscard]] const std::string& address() const { return m_address; }
    [[nodiscard]] const Program& program() const { return m_daemon.program(); }
    /// Ends the daemon by force, as a crash does.
    void crash() { m_daemon.crash(); }

  private:
    std::string m_address;
    PrivateBus m_bus;
    // The last one started ends first.
    PipeWireDaemon m_daemon;
    std::unique_ptr<Program> m_manager;
    std::unique_ptr<Program> m_pulse;
};

/// Asks a server something by the command-line client; whether it did it.
bool askServer(const std::string& server, const std::vector<std::string>& request);

} // namespace veslora::testing
