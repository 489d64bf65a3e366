# Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
"""What the workbench's window costs while it plays, beside GNU Radio's sinks: processor time of
the process and its threads, on a virtual display without a graphics card. Start and memory, beside
an empty window of Qt."""
import array
import functools
import math
import mmap
import os
import pathlib
import random
import re
import signal
import subprocess
import tempfile
import time

import turns
from turns import Missing, Sample, Task

WARM_SECONDS = 3.0
MEASURED_SECONDS = 6.0
SETTLED_SECONDS = 4.0
SAMPLE_RATE = 1e6
PER_SYMBOL = 8
SYMBOLS = 16384
ROLL_OFF = 0.35
PEER = pathlib.Path(__file__).parent / "peers" / "gnuradio_window.py"
MISSING_STATUS = 3  # with which the peer ends where it is not installed
START = "start to the first picture"
TICK = 1.0 / os.sysconf("SC_CLK_TCK")


class Display:
    """A virtual display, whose picture lies in a file."""

    def __init__(self, width, height):
        self.folder = tempfile.TemporaryDirectory()
        read, write = os.pipe()
        self.server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(write), "-screen", "0", f"{width}x{height}x24",
             "-fbdir", self.folder.name, "-nolisten", "tcp"],
            pass_fds=[write], stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
            stderr=subprocess.DEVNULL)
        os.close(write)
        with os.fdopen(read) as pipe:
            self.name = ":" + pipe.readline().strip()
        with open(pathlib.Path(self.folder.name) / "Xvfb_screen0", "rb") as file:
            self.picture = mmap.mmap(file.fileno(), 0, prot=mmap.PROT_READ)

    def shows_anything(self, row):
        """Whether a row of the picture is not black."""
        def field(index):
            return int.from_bytes(self.picture[4 * index:4 * index + 4], "big")
        start = field(0) + 12 * field(19) + row * field(12)
        return any(self.picture[start:start + field(12)])

    def close(self):
        self.picture.close()
        self.server.terminate()
        self.server.wait()
        self.folder.cleanup()


class Program:
    """A program on a display."""

    def __init__(self, display, command, scale=1):
        environment = dict(os.environ, DISPLAY=display.name, LIBGL_ALWAYS_SOFTWARE="1",
                           QT_QPA_PLATFORM="xcb", QT_SCALE_FACTOR=str(scale))
        environment.pop("WAYLAND_DISPLAY", None)
        self.process = subprocess.Popen(command, env=environment, stdin=subprocess.DEVNULL,
                                        stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def processor_seconds(self):
        fields = pathlib.Path(f"/proc/{self.process.pid}/stat").read_text().rsplit(")", 1)[1].split()
        return (int(fields[11]) + int(fields[12])) * TICK

    def memory(self):
        """MB that are its own, and its share of what others have, too."""
        text = pathlib.Path(f"/proc/{self.process.pid}/smaps_rollup").read_text()
        return int(re.search(r"^Pss:\s+(\d+)", text, re.M).group(1)) / 1024.0

    def cores(self):
        """Processor time over time once it runs; none where it does not."""
        time.sleep(WARM_SECONDS)
        if self.process.poll() is not None:
            return None
        start, before = time.monotonic(), self.processor_seconds()
        time.sleep(MEASURED_SECONDS)
        return (self.processor_seconds() - before) / (time.monotonic() - start)

    def close(self):
        if self.process.poll() is None:
            self.process.send_signal(signal.SIGTERM)
        try:
            self.process.wait(5.0)
        except subprocess.TimeoutExpired:
            self.process.kill()
            self.process.wait()


def pulse(t):
    """Root raised cosine, t in symbols."""
    if abs(t) < 1e-9:
        return 1.0 + ROLL_OFF * (4.0 / math.pi - 1.0)
    if abs(abs(4.0 * ROLL_OFF * t) - 1.0) < 1e-9:
        angle = math.pi / (4.0 * ROLL_OFF)
        return ROLL_OFF / math.sqrt(2.0) * ((1.0 + 2.0 / math.pi) * math.sin(angle) +
                                            (1.0 - 2.0 / math.pi) * math.cos(angle))
    return (math.sin(math.pi * t * (1.0 - ROLL_OFF)) +
            4.0 * ROLL_OFF * t * math.cos(math.pi * t * (1.0 + ROLL_OFF))) / (
                math.pi * t * (1.0 - (4.0 * ROLL_OFF * t) ** 2))


def write_qpsk(path):
    """Some tenths of a second of QPSK that can be repeated without a seam."""
    reach = 5  # symbols
    generator = random.Random(1)
    symbols = [complex(generator.choice((-1, 1)), generator.choice((-1, 1))) * 0.35
               for _ in range(SYMBOLS)]
    taps = [[pulse(k + phase / PER_SYMBOL) for k in range(-reach, reach + 1)]
            for phase in range(PER_SYMBOL)]
    values = array.array("f")
    for index in range(SYMBOLS):
        near = [symbols[(index - k) % SYMBOLS] for k in range(-reach, reach + 1)]
        for phase in taps:
            sample = sum(a * b for a, b in zip(near, phase))
            values.extend((sample.real + generator.gauss(0.0, 0.01),
                           sample.imag + generator.gauss(0.0, 0.01)))
    with open(path, "wb") as file:
        for _ in range(8):
            values.tofile(file)


def play(size, scale, command, renderer, prepare):
    """Cores that a program takes."""
    prepare()
    display = Display(size[0], size[1])
    program = Program(display, command, scale)
    try:
        cores = program.cores()
        if cores is None:
            return Missing if program.process.returncode == MISSING_STATUS else None
        return Sample(cores, renderer=renderer)
    finally:
        program.close()
        display.close()


def start(command, renderer, prepare):
    """Seconds to the first picture, and memory once all has settled."""
    prepare()
    display = Display(1280, 800)
    begin = time.monotonic()
    program = Program(display, command)
    try:
        while not display.shows_anything(400):
            if time.monotonic() - begin > 20.0 or program.process.poll() is not None:
                return None
            time.sleep(0.0005)
        seconds = time.monotonic() - begin
        time.sleep(SETTLED_SECONDS)
        return Sample(seconds, renderer=renderer,
                      figures={"memory then": (program.memory(), "MB")})
    finally:
        program.close()
        display.close()


def renderer_of(workbench):
    """What the window is painted with; none where an older one does not tell."""
    display = Display(1280, 800)
    environment = dict(os.environ, DISPLAY=display.name, LIBGL_ALWAYS_SOFTWARE="1",
                       QT_QPA_PLATFORM="xcb")
    try:
        text = subprocess.run([workbench, "--version", "--verbose"], env=environment, text=True,
                              capture_output=True, stdin=subprocess.DEVNULL, timeout=20).stdout
    finally:
        display.close()
    found = re.search(r"^renderer: (\w+)", text, re.M)
    return found.group(1) if found else None


class Windows:
    """The cases; their files lie in a folder."""

    def __init__(self, work):
        self.file = os.path.join(work, "qpsk.cf32")
        self.settings = os.path.join(work, "settings.ini")
        self.plain = os.path.join(work, "plain.ini")
        write_qpsk(self.file)

    def prepare(self):
        """Settings as they are at first; and without figures."""
        pathlib.Path(self.settings).unlink(missing_ok=True)
        pathlib.Path(self.plain).write_text("[Views]\nReadings=false\n")

    def played(self):
        """Title, arguments, and whether the peer shows it, too."""
        given = [self.file, "--sample-rate", "1e6"]
        received = ["--symbol-rate", str(SAMPLE_RATE / PER_SYMBOL), "--modulation", "QPSK"]
        return (("embedded demo", ["--settings", self.settings], False),
                ("QPSK at 1 MS/s, received and measured",
                 ["--settings", self.settings, *given, *received], True),
                ("QPSK at 1 MS/s, as it is, without figures",
                 ["--settings", self.plain, *given], True))

    def tasks(self, folders):
        """@param folders: role and folder of our programs."""
        workbenches = {role: str(pathlib.Path(folder) / "orvane-workbench")
                       for role, folder in folders}
        renderers = {role: renderer_of(workbench) for role, workbench in workbenches.items()}
        found = []

        def add(case, role, unit, function, *arguments):
            found.append(Task(case, role, unit, functools.partial(function, *arguments,
                                                                  self.prepare)))

        for name, pixels, scale in (("1280x800", (1280, 800), 1),
                                    ("3840x2160 at scale 2", (3840, 2160), 2)):
            size = [side // scale for side in pixels]
            peer = ["/usr/bin/python3", str(PEER), self.file, str(SAMPLE_RATE), str(PER_SYMBOL),
                    *map(str, size)]
            for title, arguments, has_peer in self.played():
                case = f"window, {title}, {name}"
                for role, workbench in workbenches.items():
                    command = [workbench, "--size", "x".join(map(str, size)), *arguments]
                    add(case, role, "cores", play, pixels, scale, command, renderers[role])
                if has_peer:
                    add(case, "GNU Radio", "cores", play, pixels, scale, peer, None)
        for role, workbench in workbenches.items():
            add(START, role, "s", start, [workbench, "--settings", self.settings],
                renderers[role])
        empty = pathlib.Path(dict(folders)["ours"]) / "empty_window"
        if empty.exists():
            add(START, "empty Qt window", "s", start, [str(empty)], None)
        return found


def run(folders, rounds, pattern, roles, cases=None):
    """Cases of our programs. @param roles: those that are measured; all where there are none."""
    with tempfile.TemporaryDirectory() as work:
        tasks = [task for task in Windows(work).tasks(folders)
                 if re.search(pattern, task.case) and (not roles or task.role in roles)]
        return turns.take(tasks, rounds, cases)
