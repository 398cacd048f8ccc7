// SPDX-License-Identifier: MIT
#include "bench/SoundServer.h"

#include "bench/Clock.h"

#include <unistd.h>

#include <cstdlib>

namespace veslora::bench {

SoundServer::SoundServer(const std::string& executables, const std::string& folder)
    : m_socket(folder + "/native"),
      m_program({executables + "/../sound/bin/pulseaudio", "-n", "--daemonize=no", "--use-pid-file=no",
                 "--exit-idle-time=-1", "--disallow-exit", "--realtime=no", "--high-priority=no", "-L",
                 std::string("module-null-sink rate=48000 norewinds=1 sink_name=") + sink, "-L",
                 "module-native-protocol-unix socket=" + m_socket + " auth-anonymous=1"}) {
    waitUntil("the sound server", [this] { return access(m_socket.c_str(), F_OK) == 0; });
    setenv("PULSE_SERVER", address().c_str(), 1);
}

SoundServer::~SoundServer() {
    unsetenv("PULSE_SERVER");
}

} // namespace veslora::bench
