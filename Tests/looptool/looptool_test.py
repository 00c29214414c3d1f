#!/usr/bin/env python3
"""The tool as a person uses it.

Arguments: the tool, the maker of the demo's drum loop, and what starts the two if they are Windows
programs. Each table below is a list of rows; a row that fails does not stop the others.
"""

import array
import csv
import io
import json
import os
import re
import resource
import select
import shutil
import signal
import struct
import subprocess
import sys
import tempfile
import time
import unittest
import wave
import xml.etree.ElementTree

TOOL, DRUMLOOP, *LAUNCHER = sys.argv[1:]
WINDOWS = bool(LAUNCHER)
# One where an emulator cannot let two threads meet.
JOBS = os.environ.get("LOOP_TEST_JOBS", "2")
# Arguments beyond ASCII reach Windows programs in a UTF-8 locale only.
ENVIRONMENT = dict(os.environ, LC_ALL="C.UTF-8")
IS_ROOT = not WINDOWS and os.geteuid() == 0


def run(*arguments, stdin=b"", program=TOOL, bound=False, **options):
    """Exit code, standard output and standard error as bytes, carriage returns of Windows dropped.

    `bound`: by the rights of files, which do not bind root otherwise.
    """
    options.setdefault("stdout", subprocess.PIPE)
    if bound and IS_ROOT:
        arguments = ["--bounding-set=-dac_override,-dac_read_search", program, *arguments]
        program = "setpriv"
    if stdin is not None:
        options["input"] = stdin
    done = subprocess.run(
        [*LAUNCHER, program, *arguments], stderr=subprocess.PIPE, env=ENVIRONMENT, timeout=120,
        **options)
    return done.returncode, done.stdout, done.stderr.replace(b"\r", b"")


def tool(*arguments, **options):
    """Standard output of a run that must succeed."""
    code, out, err = run(*arguments, **options)
    if code != 0:
        raise AssertionError(f"exit code {code} of {arguments}: {err.decode(errors='replace')}")
    return out


def read(path):
    with open(path, "rb") as file:
        return file.read()


def write(path, data):
    with open(path, "wb") as file:
        file.write(data)
    return path


def info(path, *arguments):
    return json.loads(tool("info", path, "--json", *arguments))


def marks(path):
    return json.loads(tool("slices", path, "--json"))["slices"]


def make_inputs():
    """The files that the tables use, in the current folder."""
    slices = tool("drums.wav", program=DRUMLOOP).decode().strip()
    tool("make", "drums.wav", "-o", "drums.lop2", "--tempo", "120", "--bars", "2", "--slices", slices,
         "--text", "some one")
    tool("decode", "drums.lop2", "-o", "short.wav", "--bits", "16")
    with wave.open("short.wav") as source, wave.open("mono.wav", "wb") as target:
        target.setparams((1, 2, source.getframerate(), 0, "NONE", ""))
        samples = array.array("h", source.readframes(source.getnframes()))
        target.writeframes(samples[::2].tobytes())
    with wave.open("three.wav", "wb") as target:
        target.setparams((3, 2, 44100, 0, "NONE", ""))
        target.writeframes(bytes(600))
    write("empty", b"")
    write("text.txt", b"no audio here\n" * 100)
    write("cut.wav", read("drums.wav")[:200000])
    write("cut.lop2", read("drums.lop2")[:20000])
    write("control.json", b"[1]")
    write("labels.txt", b"0.000000\t0.1\tkick\n\\\t20\t200\n0.25\t0.3\tsnare\r\n1.5\t1.5\t\n")
    write("bad.txt", b"0.1\t0.2\ta\nsoon\t1\tb\n")
    write("damaged.lop2", read("drums.lop2").replace(b"GLOB", b"GLOX"))
    os.mkdir("folder")
    return slices


def on_terminal(arguments, steps, columns, variables=()):
    """Exit code and output of a run on a terminal; each step's keys are pressed once the text of the
    step before is shown. The terminal must be left as it was."""
    import fcntl, pty, termios

    keyboard, terminal = pty.openpty()
    fcntl.ioctl(terminal, termios.TIOCSWINSZ, struct.pack("HHHH", 24, columns, 0, 0))
    before = termios.tcgetattr(terminal)
    work = subprocess.Popen([TOOL, *arguments], stdin=terminal, stdout=terminal, stderr=terminal,
                            env=dict(ENVIRONMENT, **dict(variables)), preexec_fn=lambda: (
                                os.setsid(), fcntl.ioctl(0, termios.TIOCSCTTY, 0)))
    shown = ""
    end = time.monotonic() + 60
    for keys, text in [*steps, ("", "")]:
        os.write(keyboard, keys.encode())
        seen = len(shown)
        while text not in shown[seen:] if text else work.poll() is None or select.select(
                [keyboard], [], [], 0)[0]:
            if time.monotonic() > end:
                work.kill()
            if select.select([keyboard], [], [], 0.01)[0]:
                shown += os.read(keyboard, 65536).decode()
            if text and work.poll() is not None:
                break
    after = termios.tcgetattr(terminal)
    os.close(terminal)
    os.close(keyboard)
    if before != after:
        raise AssertionError("the terminal is not as it was")
    return work.wait(), shown


class LoopToolTest(unittest.TestCase):
    maxDiff = None

    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.mkdtemp()
        os.chdir(cls.folder)
        cls.slices = make_inputs()

    @classmethod
    def tearDownClass(cls):
        os.chdir("/")
        shutil.rmtree(cls.folder)

    def snapshot(self):
        """What tells every file's state without reading it: its number, size and last change."""
        paths = [os.path.join(folder, name) for folder, _, names in os.walk(".") for name in names]
        states = {path: os.lstat(path) for path in paths}
        return {path: (s.st_ino, s.st_size, s.st_mtime_ns) for path, s in states.items()}

    def check_failure(self, code, said, arguments, **options):
        """The exit code, one line on standard error with `said` in it, and no file made or changed."""
        with self.subTest(arguments=arguments):
            before = self.snapshot()
            real, _, err = run(*arguments, **options)
            text = err.decode(errors="replace")
            self.assertEqual((code, text.count("\n")), (real, 1), text)
            self.assertIn(said, text)
            self.assertEqual(before, self.snapshot())

    # Bad input of every kind. Rows: exit code, words, arguments.
    FAILURES = [
        (1, "did you mean \"info\"", ["inof", "drums.lop2"]),
        (1, "did you mean \"plot\"", ["PLOT", "drums.lop2"]),
        (1, "did you mean \"--json\"", ["info", "drums.lop2", "--jsn"]),
        (1, "second.lop2: preview takes one file", ["preview", "drums.lop2", "second.lop2", "-o", "x.wav"]),
        (1, "unknown command \"xyzzy\"", ["xyzzy"]),
        (1, "a command is needed", []),
        (1, "FILE", ["info"]),
        (2, "nothing.lop2: no such file", ["info", "nothing.lop2"]),
        (2, "folder: is a folder", ["info", "folder"]),
        (2, "empty: is empty", ["info", "empty"]),
        (2, "text.txt: not a loop file", ["info", "text.txt"]),
        (2, "drums.wav: not a loop file", ["decode", "drums.wav", "-o", "x.wav"]),
        (2, "cut.lop2: a damaged loop file (chunk \"SDAT\" reaches", ["info", "cut.lop2"]),
        (2, "chunk \"GLOB\" is missing", ["preview", "damaged.lop2", "-o", "x.wav"]),
        (1, "--field", ["info", "drums.lop2", "--field", "settings.nothing"]),
        (2, "has 16 slices; there is no slice 16", ["render", "drums.lop2", "-o", "x", "--slice", "16"]),
        (2, "no/where.wav: cannot write", ["preview", "drums.lop2", "-o", "no/where.wav"]),
        (2, "folder: is a folder", ["preview", "drums.lop2", "-o", "folder"]),
        (1, "x.mp3: no kind of audio", ["decode", "drums.lop2", "-o", "x.mp3"]),
        (1, "not floats", ["preview", "drums.lop2", "-o", "x.flac", "--bits", "float"]),
        (1, "20 to 450", ["preview", "drums.lop2", "-o", "x.wav", "--tempo", "10"]),
        (1, "20 to 450", ["preview", "drums.lop2", "-o", "x.wav", "--tempo", "nan"]),
        (1, "20 to 450", ["make", "drums.wav", "-o", "x.lop2", "--bars", "2", "--tempo", "inf"]),
        (1, "from 11025 to 1000000", ["render", "drums.lop2", "-o", "x", "--rate", "0x5622"]),
        (1, "from 0.001", ["preview", "drums.lop2", "-o", "x.wav", "--seconds", "0"]),
        (1, "more than the 4 GB", ["preview", "drums.lop2", "-o", "x.wav", "--seconds", "99999"]),
        (2, "nothing.wav: no such file", ["make", "nothing.wav", "-o", "x.lop2", "--bars", "1"]),
        (2, "not a", ["make", "text.txt", "-o", "x.lop2", "--bars", "1"]),
        (2, "cut short: it says", ["make", "cut.wav", "-o", "x.lop2", "--bars", "1"]),
        (2, "has 3 channels", ["make", "three.wav", "-o", "x.lop2", "--bars", "1"]),
        (1, "lies behind the audio", ["make", "drums.wav", "-o", "x.lop2", "--bars", "1",
                                      "--slices", "999999999"]),
        (1, "is not a list of frames", ["make", "drums.wav", "-o", "x.lop2", "--bars", "1",
                                     "--slices", "0,0x11"]),
        (2, "bad.txt: line 2", ["make", "drums.wav", "-o", "x.lop2", "--bars", "1",
                                "--slices", "bad.txt"]),
        (2, "no cue points", ["make", "drums.wav", "-o", "x.lop2", "--bars", "1", "--slices", "cue"]),
        (1, "--signature", ["make", "drums.wav", "-o", "x.lop2", "--bars", "1", "--signature", "4/16"]),
        (1, "255 bytes", ["make", "drums.wav", "-o", "x.lop2", "--bars", "1", "--text", "\u00e4" * 128]),
        (1, "at most five", ["make", "drums.wav", "-o", "x.lop2", "--bars", "1", *["--text", "t"] * 6]),
        (1, "ends in .lop2", ["make", "drums.wav", "-o", "x.wav", "--bars", "1"]),
        (1, "another kind", ["make", "mono.wav", "-o", "x.tsl", "--kind", "lop", "--bars", "1"]),
        (2, "it is stereo", ["make", "short.wav", "-o", "x.tsl", "--bars", "2"]),
        (1, "exists already", ["make", "drums.wav", "-o", "drums.lop2", "--bars", "2"]),
        (1, "is the input too", ["make", "drums.wav", "-o", "drums.wav", "--kind", "lop2", "--bars",
                                 "2", "--force"]),
        (1, "is the input too", ["decode", "drums.lop2", "-o", "./drums.lop2", "--format", "wav"]),
        (1, "would both become", ["make", "drums.wav", "folder/drums.wav", "-o", "x"]),
        (1, "would both become", ["render", "drums.lop2", "folder/drums.lop2", "-o", "x"]),
        (1, "go to a folder", ["decode", "drums.lop2", "damaged.lop2", "-o", "-"]),
        (1, "which is not a whole number", ["make", "drums.wav", "-o", "x.lop2", "--tempo", "97"]),
        (2, "control.json: not the JSON", ["make", "drums.wav", "-o", "x.lop2", "--settings",
                                           "control.json"]),
        (1, "from 0 to 7943", ["make", "drums.wav", "-o", "x.lop2", "--bars", "1", "--gain", "8000"]),
        (1, "no such setting", ["make", "mono.wav", "-o", "x.lop", "--bars", "1", "--gain", "8"]),
    ]

    # Likewise where the system offers it. Rows may end in what runs before them.
    POSIX_FAILURES = [
        (2, "standard output: cannot write", ["info", "drums.lop2", ">full"]),
        (2, "standard output: cannot write", ["preview", "drums.lop2", "-o", "-", ">full"]),
        (2, "/dev/full: cannot write", ["preview", "drums.lop2", "-o", "/dev/full"]),
        (2, "standard output: cannot write: Broken pipe", ["slices", "drums.lop2", ">closed"]),
        (2, "standard output: cannot write: Broken pipe", ["preview", "drums.lop2", "-o", "-", ">closed"]),
        (2, "b\\xFFd.lop2: no such file", ["info", b"b\xffd.lop2"]),
        (1, "not UTF-8", ["make", "drums.wav", "-o", "x.lop2", "--bars", "1", "--text", b"\xff"]),
        (2, "standard input: is empty", ["info", "-"]),
        (2, "locked/drums.lop2: Permission denied", ["info", "locked/drums.lop2"]),
        (2, "locked/x.wav: cannot write: Permission denied", ["decode", "drums.lop2", "-o",
                                                              "locked/x.wav"]),
        (2, "cannot make the folder: Permission denied", ["export", "drums.lop2", "-o", "locked/x"]),
        (2, "target.wav: cannot write: File too large", ["preview", "drums.lop2", "-o", "target.wav",
                                                         ">limited"]),
        (2, "target.lop2: cannot write: File too large", ["make", "drums.wav", "-o", "target.lop2",
                                                          "--bars", "2", "--force", ">limited"]),
    ]

    def test_failures(self):
        for code, said, arguments in self.FAILURES:
            self.check_failure(code, said, arguments)

    @unittest.skipIf(WINDOWS, "devices and bytes of Linux")
    def test_posix_failures(self):
        os.mkdir("locked")
        shutil.copy("drums.lop2", "locked")
        os.chmod("locked/drums.lop2", 0)
        os.chmod("locked", 0o555)
        self.addCleanup(os.chmod, "locked", 0o755)
        for name in ("target.wav", "target.lop2"):
            write(name, b"old")
        for code, said, arguments in self.POSIX_FAILURES:
            options = {}
            if arguments[-1] == ">full":
                options["stdout"] = open("/dev/full", "wb")
            elif arguments[-1] == ">closed":
                reading, writing = os.pipe()
                os.close(reading)
                options["stdout"] = os.fdopen(writing, "wb")
            elif arguments[-1] == ">limited":  # files may not grow, as on a full disk
                options["preexec_fn"] = lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (9999, 9999))
            self.check_failure(code, said, [a for a in arguments if a[:1] not in (">", b">")],
                               bound=True, **options)
            if "stdout" in options:
                options["stdout"].close()
        self.assertTrue(os.path.exists("/dev/full"))

    # What was packed comes back to the bit. Rows: audio made from drums.wav or short.wav, its suffix.
    def test_audio_comes_back(self):
        self.assertEqual(read("drums.wav"), tool("decode", "drums.lop2", "-o", "-"))
        for depth, original in (("24", "drums.wav"), ("16", "short.wav")):
            for suffix in ("wav", "aiff") if WINDOWS else ("wav", "aiff", "flac"):
                with self.subTest(depth=depth, suffix=suffix):
                    name = f"back{depth}.{suffix}"
                    tool("decode", "drums.lop2", "-o", name, "--bits", depth)
                    tool("make", name, "-o", name + ".lop2", "--bars", "2")
                    tool("decode", name + ".lop2", "-o", name + ".wav")
                    self.assertEqual(read(original), read(name + ".wav"))

    # Replacing an output is all or nothing, and goes through links.
    @unittest.skipIf(WINDOWS, "links and modes of Linux")
    def test_outputs_replace_safely(self):
        write("target.wav", b"old")
        os.chmod("target.wav", 0o640)
        os.symlink("target.wav", "link.wav")
        tool("decode", "drums.lop2", "-o", "link.wav")
        self.assertTrue(os.path.islink("link.wav"))
        self.assertEqual(read("drums.wav"), read("target.wav"))
        self.assertEqual(0o640, os.stat("target.wav").st_mode & 0o777)
        os.link("drums.lop2", "hard.wav")
        self.assertEqual(1, run("decode", "drums.lop2", "-o", "hard.wav")[0])

    # Rows: what --slices says, the frames that come out (44100 Hz, 88200 frames a bar of 4/4 at 120).
    SLICES = [
        ("none", [0]),
        ("0,011025,22050", [0, 11025, 22050]),
        ("0.25s,0", [0, 11025]),
        ("0b,1.5b,1.5b", [0, 33075]),
        ("beats/1", list(range(0, 176400, 22050))),
        ("labels.txt", [0, 11025, 66150]),
        ("slices.json", [0, 5000, 9000]),
    ]

    def test_slices(self):
        write("slices.json", json.dumps({"slices": [
            {"start_frame": 0}, {"start_frame": 9000, "muted": True},
            {"start_frame": 5000, "hidden": True}]}).encode())
        for wish, frames in self.SLICES:
            with self.subTest(wish=wish):
                tool("make", "--slices", wish, "drums.wav", "-o", "cuts.lop2", "--bars", "2", "--force")
                self.assertEqual(frames, [m["start_frame"] for m in marks("cuts.lop2")])
        states = [(m["hidden"], m["muted"], m["slice"]) for m in marks("cuts.lop2")]
        self.assertEqual([(False, False, 0), (True, False, None), (False, True, 1)], states)

    # Bars, tempo and slices by ear: every hit of the drum loop has its cut, at most 5 ms before and 2 ms
    # behind its attack.
    def test_auto(self):
        code, _, err = run("make", "drums.wav", "-o", "auto.lop2", "--slices", "auto")
        self.assertEqual((0, True), (code, b"2 bars of 4/4 at 120 BPM (confidence" in err), err)
        hits = [int(frame) for frame in self.slices.split(",")]
        cuts = [mark["start_frame"] for mark in marks("auto.lop2") if mark["stored"]]
        self.assertEqual(len(hits), len(cuts))
        for hit, cut in zip(hits, cuts):
            self.assertTrue(-88 <= hit - cut <= 220, (hit, cut))
        # A moment of silence at the start gets no slice of its own.
        with wave.open("short.wav") as source, wave.open("late.wav", "wb") as target:
            target.setparams(source.getparams())
            sound = source.readframes(source.getnframes())
            target.writeframes(bytes(441 * 4) + sound[:-441 * 4])
        tool("make", "late.wav", "-o", "late.lop2", "--slices", "auto")
        starts = [mark["start_frame"] for mark in marks("late.lop2")]
        self.assertEqual((len(hits), 0, True), (len(starts), starts[0], starts[1] > 882))
        with wave.open("silence.wav", "wb") as target:
            target.setparams((1, 2, 44100, 0, "NONE", ""))
            target.writeframes(bytes(200000))
        self.check_failure(1, "too unsure; give --bars or --tempo",
                           ["make", "silence.wav", "-o", "x.lop2", "--slices", "auto"])

    def test_cue_points_and_loop_of_wav(self):
        plain = read("mono.wav")
        cues = struct.pack("<I", 2) + b"".join(
            struct.pack("<II4sIII", i, at, b"data", 0, 0, at) for i, at in enumerate((44100, 66150)))
        loop = bytes(28) + struct.pack("<II", 1, 0) + struct.pack("<IIIIII", 0, 0, 44100, 132299, 0, 0)
        chunks = (b"cue " + struct.pack("<I", len(cues)) + cues + b"smpl" +
                  struct.pack("<I", len(loop)) + loop)
        data = plain[8:] + chunks
        write("cues.wav", b"RIFF" + struct.pack("<I", len(data)) + data)
        tool("make", "cues.wav", "-o", "cues.tsl", "--slices", "cue", "--bars", "1")
        self.assertEqual([44100, 66150], [m["start_frame"] for m in marks("cues.tsl") if m["stored"]])
        held = info("cues.tsl")
        self.assertEqual((44100, 132300, 120.0),
                         (held["loop_start"], held["loop_end"], held["loop_tempo"]))

    # Every setting of every kind: each gets a value of its own, and comes back.
    def test_settings_come_back(self):
        for kind, count in (("lop2", 34), ("tsl", 5), ("lop", 0)):
            with self.subTest(kind=kind):
                help_text = tool("make", "--help").decode()
                rows = self.settings_of_help(help_text, kind)
                self.assertEqual(count, len(rows))
                options = [word for option, value in rows for word in (option, str(value))]
                texts = ["--text", "one", "--text", "t\u0151\n2"] if kind == "lop2" else []
                signature = [] if kind == "lop" else ["--signature", "3/8"]
                tool("make", "mono.wav", "-o", "all." + kind, "--bars", "1", "--beats", "2", "--tempo",
                     "99.5", "--slices", "0,9000", *signature, *texts, *options, "--force")
                first = json.loads(tool("info", "all." + kind, "--settings"))
                flat = self.flatten(first["settings"])
                for option, value in rows:
                    self.assertEqual(value, flat[option[2:]], option)
                write("all.json", json.dumps(first).encode())
                tool("make", "mono.wav", "-o", "again." + kind, "--settings", "all.json", "--slices",
                     "0,9000", "--force")
                self.assertEqual(read("all." + kind), read("again." + kind))

    @staticmethod
    def settings_of_help(text, kind):
        """Option and a value that is not the default, from the lines '--gain N  0 to 7943: ...'."""
        rows = []
        for option, *ends in re.findall(r"(--[a-z0-9-]+) N\s+(-?\d+) to (-?\d+):", text):
            least, greatest = map(int, ends)
            only_tsl = option in ("--slice-sensitivity-tenths", "--stretch-index", "--stored-flag")
            both = option in ("--split-into-slices", "--drop-muted")
            if kind == "lop" or (kind == "tsl" and not (only_tsl or both)) or (
                    kind == "lop2" and only_tsl):
                continue
            special = {"--grid": 11, "--split-into-slices": 0, "--tempo-sync": 0}
            value = special.get(option, 1 if greatest == 1 else least + (greatest - least) // 3)
            rows.append((option, value))
        return rows

    @staticmethod
    def flatten(settings):
        flat = {}
        for key, value in settings.items():
            for name, inner in value.items() if isinstance(value, dict) else [("", value)]:
                flat["-".join(filter(None, (key, name))).replace("_", "-")] = int(inner)
        return flat

    def test_info(self):
        held = info("drums.lop2")
        for key, value in dict(kind="lop2", frames=176400, seconds=4.0, bars=2, beats=0, slice_count=16,
                               bit_depth=24, loop_tempo=120.0, time_signature=[4, 4]).items():
            self.assertEqual(value, held[key], key)
        self.assertEqual(b"120.0", tool("info", "drums.lop2", "--field", "loop_tempo").strip())
        self.assertEqual(2, len(json.loads(tool("info", "drums.lop2", "drums.lop2", "--json"))))
        self.assertEqual(held["frames"], json.loads(
            tool("info", "-", "--json", stdin=read("drums.lop2")))["frames"])
        code, out, err = run("info", "nothing", "drums.lop2")
        self.assertEqual((2, True, True), (code, b"16" in out, b"nothing: no such file" in err))
        self.assertIn("start frame", tool("slices", "drums.lop2").decode())
        tool("make", "mono.wav", "-o", "control.lop2", "--bars", "2", "--text", "a\x1b[31m\nb")
        self.assertIn(b"a\\x1B[31m\\nb", tool("info", "control.lop2"))

    def test_older_kinds(self):
        for kind in ("tsl", "lop"):
            with self.subTest(kind=kind):
                tool("make", "mono.wav", "-o", "mono." + kind, "--bars", "2", "--slices", self.slices)
                self.assertEqual((kind, 16), tuple(info("mono." + kind)[k] for k in ("kind", "slice_count")))
                self.assertEqual(read("mono.wav"), tool("decode", "mono." + kind, "-o", "-"))
                tool("preview", "mono." + kind, "--tempo", "80", "--seconds", "1", "-o", "older.wav")

    def test_render_and_preview(self):
        tool("render", "drums.lop2", "-o", "out", "--rate", "48000", "--format", "aiff")
        self.assertEqual([f"drums_slice_{i:03}.aiff" for i in range(16)], sorted(os.listdir("out")))
        tool("preview", "drums.lop2", "--tempo", "97.5", "--seconds", "2", "-o", "preview.wav")
        piped = tool("preview", "drums.lop2", "--tempo", "97.5", "--seconds", "2", "-o", "-")
        self.assertEqual(read("preview.wav"), piped)
        if not WINDOWS:
            held = tool("preview", "drums.lop2", "--seconds", "1", "-o", "-", "--format", "flac")
            tool("preview", "drums.lop2", "--seconds", "1", "-o", "held.flac")
            header = 42  # which lacks the length in a pipe
            self.assertEqual(read("held.flac")[header:], held[header:])
        raw = tool("preview", "drums.lop2", "--tempo", "97.5", "--seconds", "2", "-o", "-", "--format",
                   "raw")
        self.assertEqual(piped[-len(raw):], raw)
        self.assertEqual(2 * 44100 * 2 * 4, len(raw))

    # Work that takes minutes gives its first bytes at once, in little memory.
    @unittest.skipIf(WINDOWS, "signals of Linux")
    def test_long_work(self):
        command = [TOOL, "preview", "drums.lop2", "--seconds", "40000", "--format", "raw", "-o", "-"]
        with subprocess.Popen(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE) as long:
            self.assertEqual(4096, len(long.stdout.read(4096)))
            status = read(f"/proc/{long.pid}/status").decode()
            self.assertLess(int(re.search(r"VmHWM:\s+(\d+) kB", status)[1]), 64 * 1024)
            long.stdout.close()
            self.assertEqual(2, long.wait(60))

    # An interrupted command leaves whole files and no others, and the old file where it would have
    # replaced one. Rows: arguments, signal, what shows that the work has begun: a file, or "input" for
    # the first bytes of standard input taken, or "all input".
    INTERRUPTED = [
        (["preview", "drums.lop2", "--seconds", "40000", "-o", "old.raw"], signal.SIGINT, ".looptool"),
        (["preview", "drums.lop2", "--seconds", "40000", "-o", "new.raw", "--exact"], signal.SIGTERM,
         ".looptool"),
        (["make", "-", "-o", "old.lop2", "--bars", "9", "--force"], signal.SIGTERM, "input"),
        (["make", "-", "-o", "old.lop2", "--bars", "9", "--force"], signal.SIGINT, "all input"),
        (["info", "-"], signal.SIGHUP, "input"),
        (["export", "long.lop2", "-o", ".", "--bits", "24"], signal.SIGINT, "long_slice_000.wav"),
    ]

    @unittest.skipIf(WINDOWS, "signals of Linux")
    def test_interrupts(self):
        for name in ("old.raw", "old.lop2"):
            write(name, b"old")
        tool("preview", "drums.lop2", "--seconds", "60", "-o", "long.wav", "--bits", "24")
        tool("make", "long.wav", "-o", "long.lop2", "--bars", "30", "--slices", "beats/8")
        sound = read("long.wav")
        for arguments, number, begun in self.INTERRUPTED:
            with self.subTest(arguments=arguments, begun=begun):
                before = self.snapshot()
                with subprocess.Popen([TOOL, *arguments], stdin=subprocess.PIPE,
                                      stderr=subprocess.PIPE) as work:
                    if begun.endswith("input"):
                        work.stdin.write(sound if begun == "all input" else sound[:99999])
                        work.stdin.flush()
                    if begun == "all input":
                        work.stdin.close()
                    while "input" not in begun and not any(n.startswith(begun) for n in os.listdir(".")):
                        time.sleep(0.001)
                    work.send_signal(number)
                    self.assertEqual(130, work.wait(60))
                    self.assertEqual(b"looptool: interrupted\n", work.stderr.read())
                after = self.snapshot()
                for name in set(after) - set(before):
                    self.assertRegex(name, r"^./long_slice_\d+\.wav$")
                    with wave.open(name) as slice_file:
                        size = slice_file.getnframes() * 6
                    self.assertGreater(os.path.getsize(name), size)
                    os.remove(name)
                self.assertEqual(before, self.snapshot())

    # Passes of the exact preview are equal however far the loop has gone round.
    def test_exact_preview(self):
        tool("preview", "drums.lop2", "--tempo", "100", "--loops", "40", "--exact", "-o", "exact.raw")
        passes = 8 * 60 / 100 * 44100
        frame = 2 * 4
        data = read("exact.raw")
        self.assertEqual(round(40 * passes) * frame, len(data))
        length = 30000 * frame
        at = [round(n * passes) * frame for n in (2, 39)]
        self.assertEqual(data[at[0]:at[0] + length], data[at[1]:at[1] + length])

    def test_list(self):
        os.makedirs("many loops/deep")
        for name, bars in (("a.lop2", 1), ("deep/b.tsl", 2), ("deep/c,d.lop", 4)):
            tool("make", "mono.wav", "-o", "many loops/" + name, "--bars", str(bars))
        tool("make", "drums.wav", "-o", "many loops/e.lop2", "--bars", "2", "--text", 'say "x"')
        shutil.copy("drums.wav", "many loops")
        rows = [json.loads(line) for line in tool("list", "many loops", "--json-lines").splitlines()]
        self.assertEqual(["a.lop2", "b.tsl", "c,d.lop", "e.lop2"],
                         sorted(os.path.basename(row["file"].replace("\\", "/")) for row in rows))
        for filters, count in (
                (["--tempo", "100..130"], 2), (["--bars", "2"], 2), (["--channels", "2"], 1),
                (["--kind", "lop2", "--bars", "..1"], 1), (["--text", "say"], 1), (["--bars", "5.."], 0)):
            with self.subTest(filters=filters):
                lines = tool("list", "many loops", "--json-lines", *filters).splitlines()
                self.assertEqual(count, len(lines))
        tempos = [row["tempo"] for row in csv.DictReader(io.StringIO(
            tool("list", "many loops", "--csv", "--sort", "tempo", "--reverse").decode()))]
        self.assertEqual(["240", "120", "120", "60"], tempos)
        self.check_failure(1, "--tempo: must be a number, or a range", ["list", ".", "--tempo", "x"])
        shutil.copy("damaged.lop2", "many loops")
        code, out, err = run("list", "many loops")
        self.assertEqual((2, 5, True), (code, out.count(b"\n"), b"damaged.lop2: not" in err))

    def test_check(self):
        os.mkdir("checked")
        for name in ("drums.lop2", "cut.lop2", "drums.wav"):
            shutil.copy(name, "checked")
        shutil.copy("text.txt", "checked/named.tsl")
        code, out, err = run("check", "checked")
        lines = sorted(line.split(b"  ")[0] for line in out.splitlines())
        self.assertEqual((1, [b"BAD", b"BAD", b"OK"], b""), (code, lines, err))
        self.assertIn(b'chunk "SDAT" reaches', out)
        self.assertEqual(0, run("check", "checked/drums.lop2")[0])

    @unittest.skipIf(WINDOWS, "the reader of MIDI files is one of Linux")
    def test_export(self):
        import mido

        tool("export", "drums.lop2", "-o", "sampler")
        song = mido.MidiFile("sampler/drums.mid")
        notes = [(round(time, 3), message.note) for time, message in self.timed(song)
                 if message.type == "note_on"]
        self.assertEqual([(i * 0.25, 36 + i) for i in range(16)], notes)
        self.assertAlmostEqual(4.0, song.length, 6)
        regions = [dict(word.split("=") for word in line.split()[1:])
                   for line in read("sampler/drums.sfz").decode().splitlines()
                   if line.startswith("<region>")]
        self.assertEqual([str(36 + i) for i in range(16)], [region["key"] for region in regions])
        for region in regions:
            with open(os.path.join("sampler", region["sample"]), "rb") as file:
                self.assertEqual(b"RIFF", file.read(4))

    @staticmethod
    def timed(song):
        now = 0.0
        for message in song:
            now += message.time
            yield now, message

    def test_plot(self):
        tool("make", "drums.wav", "-o", "marks.lop2", "--bars", "2", "--slices", "0,9000,20000", "--text",
             "<&>")
        shutil.copy("marks.lop2", "a&b.lop2")
        tool("plot", "a&b.lop2", "-o", "light.svg")
        tool("plot", "a&b.lop2", "-o", "dark.svg", "--dark")
        picture = xml.etree.ElementTree.parse("light.svg").getroot()
        texts = [text.text for text in picture.iter("{http://www.w3.org/2000/svg}text")]
        self.assertIn("a&b.lop2", texts)
        self.assertNotEqual(read("light.svg"), read("dark.svg"))
        self.assertIn(b"##", tool("plot", "a&b.lop2", "--ascii"))
        if WINDOWS:
            self.check_failure(1, "no cairo", ["plot", "marks.lop2", "-o", "x.png"])
        elif b"with cairo" in tool("--version"):
            tool("plot", "marks.lop2", "-o", "x.png")
            self.assertEqual(b"\x89PNG", read("x.png")[:4])
        self.check_failure(1, "ends in .svg or .png", ["plot", "marks.lop2", "-o", "x.jpg"])

    def test_play(self):
        if b"with PortAudio" not in tool("--version"):
            self.check_failure(1, "cannot play", ["play", "drums.lop2"])
            return
        write("null.conf", b"pcm.!default { type null }\nctl.!default { type null }\n")
        ENVIRONMENT["ALSA_CONFIG_PATH"] = os.path.abspath("null.conf")
        self.addCleanup(ENVIRONMENT.pop, "ALSA_CONFIG_PATH")
        self.assertEqual((0, b"", b""), run("play", "drums.lop2", "--loops", "0.5", "--tempo", "450"))
        # Rows: keys, what the line then shows.
        keys = [("", "playing  bar 1  beat 1  120.0"), ("+", "121.0"), ("=\x1b[A", "123.0"),
                ("--\x1bOB", "120.0"), (" ", "stopped"), (" ", "playing"), ("", "beat 2"), ("q", "")]
        code, shown = on_terminal(["play", "drums.lop2"], keys, columns=80)
        self.assertEqual(0, code, shown)
        code, shown = on_terminal(["play", "drums.lop2"], [("", "playing"), ("\x03", "")], columns=20)
        self.assertEqual(130, code, shown)
        self.assertEqual({"bea"}, set(re.findall("playing  bar .  ([^\r^]*)", shown)))

    # Bars and colours are for terminals alone, and a bar stays on its line.
    @unittest.skipIf(WINDOWS, "terminals of Linux")
    def test_terminal(self):
        work = ["preview", "drums.lop2", "--seconds", "9000", "--format", "raw", "-o", "/dev/null"]
        for columns in (14, 40, 200):
            code, shown = on_terminal(work, [("", "%"), ("\x03", "")], columns)
            bars = re.findall(r"\r([^\r]*\[[#.]+\] +\d+%)", shown)
            self.assertEqual((130, True), (code, bool(bars)), shown)
            self.assertGreater(columns, max(map(len, bars)))
        for variables, colours in (({}, 1), ({"NO_COLOR": "1"}, 0)):
            code, shown = on_terminal(["check", "drums.lop2"], [], 80, variables)
            self.assertEqual((0, colours), (code, shown.count("\x1b[32m")))

    # What each shell offers. Rows: the shell, a command that asks for completions of COMMAND LINE.
    COMPLETIONS = [
        ("bash", "source looptool.bash; COMP_WORDS=($LINE); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); "
                 "_looptool; printf '%s\\n' \"${COMPREPLY[@]}\""),
        ("fish", "source looptool.fish; complete -C \"$LINE\""),
    ]

    @unittest.skipIf(WINDOWS, "shells of Linux")
    def test_completions(self):
        sources = os.path.join(os.path.dirname(__file__), "../../Tools/looptool/Completions")
        for shell, ask in self.COMPLETIONS:
            for line, offered in (("looptool pl", ["play", "plot"]), ("looptool make --tex", ["--text"]),
                                  ("looptool make --kind t", ["tsl"])):
                if shutil.which(shell) is None:
                    continue
                with self.subTest(shell=shell, line=line):
                    path = os.path.dirname(TOOL) + ":" + os.environ["PATH"]
                    done = subprocess.run([shell, "-c", ask], cwd=sources, stdout=subprocess.PIPE,
                                          env=dict(ENVIRONMENT, LINE=line, PATH=path), timeout=60)
                    words = [text.split("\t")[0] for text in done.stdout.decode().split("\n") if text]
                    self.assertEqual(offered, sorted(set(words)))

    def test_any_file_name(self):
        names = ["żółw Ω 鼓.lop2"] + ([] if WINDOWS else [b"b\xffd: ?name.lop2", "-dash.lop2"])
        for name in names:
            with self.subTest(name=name):
                name = os.fsencode(name)
                write(name, read("drums.lop2"))
                self.assertIn(b"Slices:         16", tool("info", "--", os.fsdecode(name)))
                tool("render", "-o", b"in " + name, "--slice", "0", "--", name)
                self.assertTrue(os.path.getsize(b"in " + name + b"/" + name[:-5] + b"_slice_000.wav"))

    # Several files to a folder that is made. Rows: command, files, what it then holds, whether it takes
    # --force to do it again.
    MANY = [
        (["make", "--bars", "2", "--verbose"], ["drums.wav", "mono.wav"], ["drums.lop2", "mono.lop2"], True),
        (["decode", "--format", "aiff"], ["drums.lop2", "again.lop2"], ["again.aiff", "drums.aiff"], True),
        (["render", "--slice", "3"], ["drums.lop2", "again.lop2"],
         ["again_slice_003.wav", "drums_slice_003.wav"], False),
        (["plot"], ["drums.lop2", "again.lop2"], ["again.svg", "drums.svg"], True),
        (["plot"], ["again.lop2"], ["again.svg"], True),
    ]

    # One bad file does not stop the rest, and nothing is replaced unasked.
    def test_many_files(self):
        shutil.copy("drums.lop2", "again.lop2")
        for number, (command, files, made, is_forced) in enumerate(self.MANY):
            with self.subTest(command=command):
                folder = f"many{number}/"
                work = [*command, "-o", folder, "--jobs", JOBS, *files]
                code, _, err = run(*work[:-1], "nothing.wav", work[-1])
                self.assertEqual((2, made), (code, sorted(os.listdir(folder))), err)
                before = self.snapshot()
                if is_forced:
                    code, _, err = run(*work)
                    self.assertEqual((1, len(files)), (code, err.count(b"exists already")))
                    self.assertEqual(before, self.snapshot())
                    work.append("--force")
                tool(*work)
                self.assertNotEqual(before, self.snapshot())
        self.assertEqual(2, tool("plot", "--ascii", "drums.lop2", "again.lop2").count(b"120 BPM"))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
