// SPDX-License-Identifier: MIT
#include "tests/VesloraLinux/Support/SoundServer.h"

#include "tests/VesloraLinux/Support/Waiting.h"

#include <QtGlobal>

#include <algorithm>
#include <stdexcept>

namespace veslora::testing {
namespace {

void require(bool condition, const char* what) {
    if (!condition) {
        throw std::runtime_error(what);
    }
}

/// Of a server as tools/unpack-sound laid it down.
std::string server(const std::string& name) {
    std::string path = std::string(VESLORA_SOUND_SERVERS) + "/" + name;
    require(std::filesystem::exists(path), "no sound server; run tools/unpack-sound build/<preset>/sound");
    return path;
}

bool isNoSilence(float sample) {
    return sample != 0;
}

} // namespace

SoundEnvironment::SoundEnvironment() {
    for (const char* const variable : {"XDG_RUNTIME_DIR", "PULSE_RUNTIME_PATH"}) {
        const std::string path = m_folder.path(variable);
        std::filesystem::create_directory(path);
        std::filesystem::permissions(path, std::filesystem::perms::owner_all);
        set(variable, path);
    }
    for (const char* const variable : {"HOME", "XDG_CONFIG_HOME", "XDG_STATE_HOME", "PULSE_STATE_PATH"}) {
        set(variable, m_folder.path(variable));
        std::filesystem::create_directory(m_folder.path(variable));
    }
    for (const char* const variable :
         {"PULSE_SERVER", "PULSE_COOKIE", "PULSE_CLIENTCONFIG", "PULSE_SINK", "DISPLAY",
          "DBUS_SESSION_BUS_ADDRESS", "PIPEWIRE_REMOTE", "PIPEWIRE_RUNTIME_DIR", "PIPEWIRE_CONFIG_NAME",
          "PIPEWIRE_CONFIG_DIR"}) {
        set(variable, {});
    }
}

SoundEnvironment::~SoundEnvironment() {
    for (const auto& [variable, value] : m_former) {
        if (value.isNull()) {
            qunsetenv(variable);
        } else {
            qputenv(variable, value);
        }
    }
}

void SoundEnvironment::set(const char* variable, const std::string& value) {
    m_former.try_emplace(variable, qgetenv(variable));
    if (value.empty()) {
        qunsetenv(variable);
    } else {
        qputenv(variable, QByteArray::fromStdString(value));
    }
}

Recorder::Recorder(const SoundEnvironment& environment, const std::string& server, const std::string& sink)
    : m_path(environment.folder().path("recording-of-" + sink)) {
    std::filesystem::remove(m_path);
    m_program = std::make_unique<Program>(std::vector<std::string>{
        "parec", "--server=" + server, "--device=" + sink + ".monitor", "--raw", "--format=float32le",
        "--rate=48000", "--channels=1", "--latency-msec=20", m_path});
    require(waitUntil([this] { return !samples().empty(); }), "nothing is recorded");
}

std::vector<float> Recorder::samples() const {
    std::ifstream file(m_path, std::ios::binary);
    std::vector<float> samples;
    for (float sample = 0; file.read(reinterpret_cast<char*>(&sample), sizeof sample);) {
        samples.push_back(sample);
    }
    return samples;
}

bool Recorder::has(const std::vector<float>& expected) const {
    const std::vector<float> all = samples();
    const auto recorded = std::ranges::find_if(all, isNoSilence);
    const auto meant = std::ranges::find_if(expected, isNoSilence);
    return all.end() - recorded >= expected.end() - meant && std::equal(meant, expected.end(), recorded);
}

bool Recorder::hasSound() const {
    return std::ranges::any_of(samples(), isNoSilence);
}

PulseServer::PulseServer(const SoundEnvironment& environment)
    : m_address("unix:" + environment.folder().path("native")) {
    std::filesystem::remove(environment.folder().path("native"));
    // Without "norewinds" a sink that has been idle keeps a new stream waiting for two seconds.
    const auto sink = [](const std::string& name) {
        return "module-null-sink sink_name=" + name + " rate=48000 channels=1 format=float32le norewinds=1";
    };
    m_program = std::make_unique<Program>(std::vector<std::string>{
        server("pulseaudio"), "-n", "--daemonize=no", "--use-pid-file=no", "--exit-idle-time=-1",
        "--disallow-exit", "--realtime=no", "--high-priority=no", "-L", sink("cap"), "-L", sink("other"),
        "-L",
        "module-native-protocol-unix socket=" + environment.folder().path("native") + " auth-anonymous=1"});
    require(waitUntil([this] {
                return askServer(m_address, {"set-default-sink", "cap"});
            }),
            "no PulseAudio server");
}

PipeWireDaemon::PipeWireDaemon(SoundEnvironment& environment) {
    const std::string socket = environment.folder().path("XDG_RUNTIME_DIR") + "/pipewire-0";
    std::filesystem::remove(socket);
    // A client finds there how to speak to it.
    environment.set("PIPEWIRE_CONFIG_DIR",
                    std::string(VESLORA_SOUND_SERVERS) + "/../packages/usr/share/pipewire");
    m_program = std::make_unique<Program>(std::vector<std::string>{server("pipewire")});
    require(waitUntil([&socket] { return std::filesystem::exists(socket); }), "no PipeWire");
}

PipeWireServer::PipeWireServer(SoundEnvironment& environment)
    : m_address("unix:" + environment.folder().path("XDG_RUNTIME_DIR") + "/pulse/native"),
      m_daemon(environment) {
    environment.set("DBUS_SESSION_BUS_ADDRESS", m_bus.address().toStdString());
    environment.set("PULSE_RUNTIME_PATH", {});
    m_manager = std::make_unique<Program>(std::vector<std::string>{server("wireplumber")});
    m_pulse = std::make_unique<Program>(std::vector<std::string>{server("pipewire-pulse")});
    require(waitUntil([this] { return askServer(m_address, {"info"}); }), "no PipeWire server");
    for (const std::string name : {"cap", "other"}) {
        require(askServer(m_address, {"load-module", "module-null-sink", "sink_name=" + name, "rate=48000",
                                      "channels=1", "format=float32le"}),
                "no sink");
    }
    require(waitUntil([this] {
                return askServer(m_address, {"set-default-sink", "cap"});
            }),
            "no default sink");
}

bool askServer(const std::string& server, const std::vector<std::string>& request) {
    std::vector<std::string> arguments{"pactl", "--server=" + server};
    arguments.insert(arguments.end(), request.begin(), request.end());
    return Program(arguments).wait() == 0;
}

} // namespace veslora::testing
