#!/usr/bin/env python3
"""Writes what the native library previews: 32-bit floats, the left channel and then the right one.

usage: native_preview.py LOOP OUT RATE FRAMES FRAME:TEMPO...

Each tempo, in beats per minute, holds from its frame on; the first is 0.
"""

import pathlib
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "Bindings/Python"))

import looplibrary  # noqa: E402


def main(path, out, rate, frames, *changes):
    changes = [(int(frame), float(tempo)) for frame, tempo in (word.split(":") for word in changes)]
    ends = [frame for frame, _ in changes[1:]] + [int(frames)]
    planes = [bytearray(), bytearray()]
    with looplibrary.open(path) as loop:
        loop.set_output_sample_rate(int(rate))
        loop.set_preview_tempo(changes[0][1])
        blocks = loop.preview(block=64)
        done = 0
        for (_, tempo), end in zip(changes, ends):
            loop.set_preview_tempo(tempo)
            for done in range(done + 64, end + 64, 64):
                for plane, channel in zip(planes, next(blocks)):
                    plane += memoryview(channel).cast("B")
    pathlib.Path(out).write_bytes(bytes(planes[0][: int(frames) * 4] + planes[1][: int(frames) * 4]))


if __name__ == "__main__":
    main(*sys.argv[1:])
