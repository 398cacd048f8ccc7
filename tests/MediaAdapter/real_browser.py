# SPDX-License-Identifier: MIT
"""What the helper for music says of a page that plays in a browser."""

import json
import os
import signal

from real import RealPlayer
from real_scene import RealTestCase

PAGE = """<!doctype html><meta charset="utf-8"><title>Radio</title><audio id="sound" autoplay></audio><script>
const files = FILES, sound = document.getElementById("sound"), session = navigator.mediaSession;
let number = 0;
function go(step) {
    number = (number + step + files.length) % files.length;
    sound.src = files[number];
    session.metadata = new MediaMetadata({title: files[number].split(".")[0], artist: "Künstler", album: "Album"});
    sound.play();
}
session.setActionHandler("nexttrack", () => go(1));
session.setActionHandler("previoustrack", () => go(-1));
session.setActionHandler("seekto", details => { sound.currentTime = details.seekTime; });
go(0);
</script>
"""


# Seconds for which the end of a track waits for the next one; a little less, as both ends are told late.
BETWEEN_TRACKS = 0.08


class Chromium(RealPlayer):
    identifier = "chromium"

    def __init__(self, test, *files):
        page = os.path.join(test.folder, "page.html")
        with open(page, "w", encoding="utf-8") as file:
            file.write(PAGE.replace("FILES", json.dumps([os.path.basename(name) for name in files])))
        # It finds no other machine.
        super().__init__(test, "chromium", [
            "chromium", "--headless=new", "--no-sandbox", "--no-first-run", "--disable-gpu", "--disable-sync",
            "--disable-background-networking", "--disable-component-update", "--host-resolver-rules=MAP * ~NOTFOUND",
            "--autoplay-policy=no-user-gesture-required", "--user-data-dir=" + os.path.join(test.folder, "profile"),
            "file://" + page], start_new_session=True)
        self.instance += f".instance{self.program.pid}"
        test.addCleanup(self.kill)

    def kill(self):
        # With all its processes, which would write into the profile for a moment longer.
        if self.program.poll() is None:
            os.killpg(self.program.pid, signal.SIGKILL)
            self.program.wait()


class ChromiumTests(RealTestCase):
    @staticmethod
    def pause_in(seen):
        """For how long the player had no title, in seconds: a busy machine makes it long."""
        began = next((moment for moment, said in seen if not said["title"]), None)
        ended = next((moment for moment, said in seen if began and moment > began and said["title"]), began)
        return ended - began if began else 0

    def test_follows_what_the_user_does_with_the_page(self):
        player = self.start(Chromium, "One", "Two")
        first = self.stream.payload["contentItemIdentifier"]
        self.follows(lambda: player.does("pause"), status="Paused", title="One")
        self.agrees(player)
        self.follows_seek(player, 40)
        self.agrees(player)
        self.follows(lambda: player.does("play"), status="Playing", title="One")
        self.agrees(player)
        lines, signals = len(self.stream.lines), len(self.witness.seen)
        self.follows(lambda: self.send("send", "4"), status="Playing", title="Two", position=0)
        self.agrees(player)
        if self.pause_in(self.witness.seen[signals:]) < BETWEEN_TRACKS:
            self.assertNotIn({}, [line["payload"] for line in self.stream.lines[lines:]], "nothing is said to end in between")
        self.assertNotEqual(self.stream.payload["contentItemIdentifier"], first)
        self.follows(lambda: self.send("send", "5"), status="Playing", title="One", position=0)
        self.follows(lambda: self.send("send", "2"), status="Paused", title="One")
        self.agrees(player)
        self.follows(player.kill, status="", title="")
