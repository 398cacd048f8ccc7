# SPDX-License-Identifier: MIT
"""A sound server on the stage whose only device drops what it is given, so that nothing can be heard in the room."""

import os
import subprocess

from .stage import ROOT, end_process
from .waiting import wait_for


class SoundServer:
    """PulseAudio, until the end of a `with`. Programs that are started meanwhile find it."""

    def __init__(self, stage, folder):
        """The folder is where the server's program lies; it is brought there where it is missing."""
        subprocess.run([os.path.join(ROOT, "tools", "unpack-sound"), folder], check=True, stdout=subprocess.DEVNULL)
        self.stage = stage
        socket = os.path.join(stage.home, "sound")
        self.process = stage.start(os.path.join(folder, "bin", "pulseaudio"), "-n", "--daemonize=no", "--use-pid-file=no",
                                   "--exit-idle-time=-1", "--disallow-exit", "--realtime=no", "--high-priority=no",
                                   "-L", "module-null-sink sink_name=room rate=48000 norewinds=1",
                                   "-L", f"module-native-protocol-unix socket={socket} auth-anonymous=1",
                                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        wait_for("the sound server", lambda: os.path.exists(socket))
        stage.env["PULSE_SERVER"] = "unix:" + socket

    def __enter__(self):
        return self

    def __exit__(self, *_):
        del self.stage.env["PULSE_SERVER"]
        end_process(self.process)

    def is_heard(self):
        """Whether anything but silence comes within a second."""
        recorder = self.stage.start("parec", "--device=room.monitor", "--raw", "--format=s16le", "--channels=1",
                                    stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        try:
            return any(recorder.stdout.read(44100 * 2))
        finally:
            recorder.kill()
            recorder.wait()
