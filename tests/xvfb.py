#!/usr/bin/env python3
"""The program under a real X server, by real keys: a target is found and tuned to, copied to the memory channels and
saved in the job; a search is stopped by its key; the next start has what the last one left.

xvfb.py PROGRAM SAMPLES starts a server of its own on a free display and ends it whatever happens."""

import contextlib
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import time

SCREEN = 1024, 600  # a small one
PATIENCE = 20  # seconds for what takes fractions of one
SAMPLE = "Boston Tower"
TARGET = "Logan Tower"  # as that is called here, to tell it from the channel of the sample job
HERTZ = 128800000


def await_that(what, question):
    """The first answer of question() that counts; it has been asked at least once."""
    end = time.monotonic() + PATIENCE
    while not (answer := question()):
        if time.monotonic() > end:
            raise AssertionError("does not come: " + what)
        time.sleep(0.05)
    return answer


@contextlib.contextmanager
def running(command, **options):
    """A process that does not outlive its block, nor this script when that is killed."""
    process = subprocess.Popen(["setpriv", "--pdeathsig", "KILL", *command], **options)
    try:
        yield process
    finally:
        if process.poll() is None:
            process.kill()
            process.wait()


@contextlib.contextmanager
def display():
    # Without -noreset the server begins anew after its last client, and refuses one that comes meanwhile.
    command = ["Xvfb", "-displayfd", "1", "-screen", "0", "%dx%dx24" % SCREEN, "-nolisten", "tcp", "-noreset"]
    with running(command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL) as server:
        number = server.stdout.readline().decode().strip()
        assert number, "Xvfb does not start"
        yield ":" + number


class Operator:
    """Whoever sits in front of a window, and knows it by its title."""

    def __init__(self, program, server):
        self.program, self.server = program, server

    def xdotool(self, *arguments):
        if self.program.poll() is not None:
            raise AssertionError(f"the program ended with {self.program.returncode}")
        environment = dict(os.environ, DISPLAY=self.server)
        return subprocess.run(["xdotool", *arguments], env=environment, stdout=subprocess.PIPE, text=True,
                              stderr=subprocess.DEVNULL, timeout=PATIENCE, check=False).stdout.split()

    def sees(self, title):
        return await_that(f"a window with the title {title}",
                          lambda: self.xdotool("search", "--onlyvisible", "--name", f"^{re.escape(title)}$"))[0]

    def looks_at(self, title):
        window = self.sees(title)
        self.xdotool("windowfocus", "--sync", window)
        return window

    def size_of(self, window):
        lines = self.xdotool("getwindowgeometry", "--shell", window)
        values = dict(line.split("=") for line in lines)
        return int(values["WIDTH"]), int(values["HEIGHT"])

    def presses(self, *keys):
        self.xdotool("key", "--clearmodifiers", *keys)

    def types(self, text):
        self.xdotool("type", "--delay", "5", text)

    def quits(self):
        self.presses("ctrl+q")
        return self.program.wait(PATIENCE)


def settings(folder):
    return (folder / "config" / "columns.ini").read_text(encoding="utf-8")


@contextlib.contextmanager
def started(program, server, folder, *arguments):
    command = [program, "--config", folder / "config", "--data", folder / "data", "--language", "en",
               "--receiver", "vuhf", *arguments]
    environment = dict(os.environ, DISPLAY=server, QT_QPA_PLATFORM="xcb", XDG_RUNTIME_DIR=str(folder))
    with running(command, env=environment) as process:
        yield Operator(process, server)


def find_tune_copy_and_save(program, server, folder, samples):
    job = folder / "mine.pij"
    targets = folder / "targets.xml"
    shutil.copy(samples / "job-vuhf.pij", job)
    text = (samples / targets.name).read_text(encoding="utf-8")
    targets.write_text(text.replace(SAMPLE, TARGET), encoding="utf-8")
    assert TARGET not in job.read_text(encoding="utf-8"), "what the keys do is not there before"
    with started(program, server, folder, "--demo", "--job", job, targets) as operator:
        window = operator.looks_at("Local TargetList - targets.xml")
        size = operator.size_of(window)
        assert all(has <= room for has, room in zip(size, SCREEN)), f"larger than the screen: {size}"
        operator.presses("ctrl+f")
        operator.types("logan tower 118-137 MHz")
        operator.presses("Down", "ctrl+Page_Down")
        operator.sees("Memory Channels - mine.pij")
        operator.presses("ctrl+Page_Up")
        operator.sees("Local TargetList - targets.xml")  # with the row that was selected
        operator.presses("ctrl+Return", "ctrl+c", "ctrl+Page_Down")
        operator.sees("Memory Channels - mine.pij")
        operator.presses("ctrl+v")
        operator.sees("Memory Channels - mine.pij*")
        operator.presses("ctrl+s")
        operator.sees("Memory Channels - mine.pij")
        assert TARGET in job.read_text(encoding="utf-8"), "saved when the star goes"
        operator.presses("F5", "F9")  # search and classifier stop
        assert operator.quits() == 0
    kept = settings(folder)
    assert re.search(r"^List=Memory Channels$", kept, re.M), kept
    assert re.search(rf"^Receiver/FrequencyVUHF={HERTZ}$|^FrequencyVUHF={HERTZ}$", kept, re.M), kept


def start_where_it_ended(program, server, folder):
    with started(program, server, folder) as operator:
        operator.looks_at("Memory Channels")
        operator.presses("alt+Right", "ctrl+Page_Up")
        operator.looks_at("Local TargetList")
        assert operator.quits() == 0
    kept = settings(folder)
    step = 25000
    assert re.search(rf"FrequencyVUHF={HERTZ + step}$", kept, re.M), kept
    assert re.search(r"^List=Local TargetList$", kept, re.M), kept


def main(program, samples):
    with tempfile.TemporaryDirectory() as name, display() as server:
        folder = pathlib.Path(name)
        find_tune_copy_and_save(program, server, folder, pathlib.Path(samples))
        start_where_it_ended(program, server, folder)


if __name__ == "__main__":
    main(*sys.argv[1:])
