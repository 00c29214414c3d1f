"""The Python module, with numpy and without (LOOP_NO_NUMPY set). Takes the shared library from
LOOPLIBRARY_PATH and a stereo loop of two bars at 120 BPM from LOOP_FILE."""

import array
import copy
import ctypes
import mmap
import os
import subprocess
import sys
import tempfile
import unittest

if os.environ.get("LOOP_NO_NUMPY"):
    sys.modules["numpy"] = None
PYTHON = os.path.join(os.path.dirname(__file__), "..", "..", "Bindings", "Python")
sys.path.insert(0, PYTHON)

import looplibrary  # noqa: E402
from looplibrary import _native  # noqa: E402

FILE = os.environ["LOOP_FILE"]


def channels(audio):
    return [list(channel) for channel in audio]


class LoopTest(unittest.TestCase):
    def test_tells_what_the_file_holds(self):
        with looplibrary.open(FILE) as loop:
            info = loop.info
            self.assertEqual((info.channels, info.time_signature), (2, (4, 4)))
            self.assertAlmostEqual(info.loop_tempo, 120.0, places=2)
            self.assertEqual((info.quarters, round(info.seconds, 3)), (8.0, 4.0))
            self.assertEqual(len(loop.slices), info.slice_count)
            quarters = [piece.quarter for piece in loop.slices]
            self.assertEqual(quarters, sorted(quarters))
            self.assertEqual(loop.slices[-1].index, info.slice_count - 1)
            self.assertEqual(len(loop.slices[1:3]), 2)
            self.assertEqual(loop.creator_texts[0], "Kicks & hats")
        self.assertEqual(looplibrary.read_info(FILE).ppq_length, 8 * looplibrary.PPQ)

    def test_renders_what_the_c_function_renders(self):
        with open(FILE, "rb") as file, looplibrary.open(file.read()) as loop:
            loop.set_output_sample_rate(48000)
            for piece in loop.slices:
                left, right = (ctypes.c_float * piece.frames)(), (ctypes.c_float * piece.frames)()
                buffers = _native.RenderBuffers(ctypes.addressof(left), ctypes.addressof(right))
                self.assertEqual(
                    1,
                    _native.get().LOPRenderSlice(
                        loop._handle, piece.index, piece.frames, ctypes.byref(buffers)
                    ),
                )
                self.assertEqual(channels(piece.render()), [list(left), list(right)])

    def test_previews_in_blocks_of_any_size(self):
        def pull(block, second_tempo=None):
            with looplibrary.open(FILE) as loop:
                sound = [[], []]
                preview = loop.preview(tempo=97.5, frames=20000, block=block)
                for audio in preview:
                    for channel in range(2):
                        sound[channel] += list(audio[channel])
                # The loop is free for another start.
                self.assertEqual(len(next(loop.preview(frames=10))[0]), 10)
                return sound

        whole = pull(65536)
        self.assertEqual(len(whole[0]), 20000)
        self.assertGreater(max(whole[0]), 0.01)
        self.assertEqual(pull(777), whole)

    def test_changes_the_tempo_on_the_way_and_stops(self):
        with looplibrary.open(FILE) as loop:
            preview = loop.preview(block=64)
            next(preview)
            preview.send(200.0)
            with self.assertRaises(looplibrary.PreviewRunningError):
                loop.set_output_sample_rate(48000)
            preview.close()
            loop.set_output_sample_rate(48000)

    def test_raises_what_went_wrong(self):
        loop = looplibrary.open(FILE)
        rows = [
            (lambda: looplibrary.open(b"no loop at all, just text"), looplibrary.FileCorruptError),
            (lambda: looplibrary.open(b""), looplibrary.InvalidArgumentError),
            (lambda: looplibrary.open("/no/such/file"), FileNotFoundError),
            (lambda: loop.slices[1000], IndexError),
            (lambda: loop.slices[-1000], looplibrary.InvalidSliceError),
            (lambda: loop.set_preview_tempo(5.0), looplibrary.InvalidTempoError),
            (lambda: loop.set_preview_tempo(float("nan")), ValueError),
            (lambda: loop.set_output_sample_rate(1), looplibrary.InvalidSampleRateError),
            (lambda: loop.preview(block=0), looplibrary.InvalidArgumentError),
            # Numbers that a 32-bit one cannot hold, and what is not a whole number or not a file.
            (lambda: loop.slices[2**32], looplibrary.InvalidSliceError),
            (lambda: loop.set_output_sample_rate(2**32 + 48000), looplibrary.InvalidSampleRateError),
            (lambda: loop.set_output_sample_rate(48000.0), TypeError),
            (lambda: loop.slices[1.5], TypeError),
            (lambda: loop.preview(frames=1.5), TypeError),
            (lambda: looplibrary.open(0), TypeError),
            # A copy would close the loop when it goes.
            (lambda: copy.copy(loop), TypeError),
        ]
        for call, error in rows:
            with self.assertRaises(error):
                call()
        with self.assertRaisesRegex(looplibrary.FileCorruptError, f"{__file__}: not a loop file"):
            looplibrary.open(__file__)
        piece, preview = loop.slices[0], loop.preview()
        next(preview)
        loop.close()
        loop.close()
        for call in (lambda: loop.info, piece.render, lambda: next(preview)):
            with self.assertRaises(looplibrary.InvalidHandleError):
                call()

    def test_takes_bytes_of_any_kind(self):
        with open(FILE, "rb") as file:
            data = file.read()
            sources = [
                bytearray(data),
                array.array("B", data),
                memoryview(bytes(value for byte in data for value in (byte, 0)))[::2],
                mmap.mmap(file.fileno(), 0, access=mmap.ACCESS_READ),
            ]
        for source in sources:
            with looplibrary.open(source) as loop:
                self.assertEqual(loop.info, looplibrary.open(FILE).info)

    def test_ends_with_loops_open_and_threads_at_work(self):
        script = """if True:
            import collections, looplibrary, sys, threading, time
            sys.keep = [looplibrary.open(sys.argv[1]), looplibrary.open(sys.argv[1]).preview()]
            next(sys.keep[1])
            for audio in [looplibrary.open(sys.argv[1]).preview() for _ in range(3)]:
                threading.Thread(target=collections.deque, args=[audio, 0], daemon=True).start()
            time.sleep(0.2)"""
        environment = dict(os.environ, PYTHONPATH=PYTHON)
        for _ in range(3):
            done = subprocess.run(
                [sys.executable, "-c", script, FILE], env=environment, stderr=subprocess.PIPE, text=True
            )
            self.assertEqual((done.returncode, done.stderr), (0, ""))

    def test_progress_stops_the_load_or_raises(self):
        seen = []
        looplibrary.open(FILE, seen.append).close()
        self.assertEqual(seen[-1], 100)
        with self.assertRaises(looplibrary.AbortedError):
            looplibrary.open(FILE, lambda percent: False)
        with self.assertRaises(ZeroDivisionError):
            looplibrary.open(FILE, lambda percent: 1 / 0)

    def test_audio_is_numpy_where_numpy_is(self):
        with looplibrary.open(FILE) as loop:
            audio = loop.slices[0].render()
            if looplibrary.numpy is None:
                self.assertEqual([channel.typecode for channel in audio], ["f", "f"])
            else:
                self.assertEqual((audio.dtype.name, audio.shape[0]), ("float32", 2))

    def test_plots_and_writes_slices(self):
        with tempfile.TemporaryDirectory() as folder:
            script = os.path.join(PYTHON, "examples", "plot_slices.py")
            environment = dict(os.environ, PYTHONPATH=PYTHON)
            subprocess.run(
                [sys.executable, script, FILE, folder], env=environment, check=True, stdout=subprocess.PIPE
            )
            slices = looplibrary.read_info(FILE).slice_count
            self.assertEqual(len(os.listdir(folder)), slices + 1)
            with open(os.path.join(folder, "loop.svg"), encoding="utf-8") as svg:
                self.assertEqual(svg.read().count("V200"), slices)


if __name__ == "__main__":
    unittest.main()
