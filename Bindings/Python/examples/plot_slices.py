#!/usr/bin/env python3
"""Plots a loop with its slices as an SVG picture and writes every slice as a WAV file.

usage: plot_slices.py LOOPFILE FOLDER
"""

import os
import struct
import sys
import wave

import looplibrary

WIDTH, HEIGHT = 1000, 200


def to_pcm(audio):
    """Interleaved 16-bit samples of one or two channels."""
    samples = (max(-32768, min(32767, round(s * 32767))) for frame in zip(*audio) for s in frame)
    return b"".join(struct.pack("<h", sample) for sample in samples)


def outline(audio, width):
    """An SVG path: the lowest and highest sample of each column."""
    left = audio[0]
    path = []
    for x in range(width):
        column = left[x * len(left) // width : (x + 1) * len(left) // width + 1]
        low, high = min(column, default=0.0), max(column, default=0.0)
        path.append(f"M{x},{HEIGHT / 2 * (1 - high):.1f}V{HEIGHT / 2 * (1 - low) + 0.5:.1f}")
    return "".join(path)


def main(loop_file, folder):
    os.makedirs(folder, exist_ok=True)
    with looplibrary.open(loop_file) as loop:
        info = loop.info
        marks = []
        drawn = []
        for piece in loop.slices:
            audio = piece.render()
            with wave.open(os.path.join(folder, f"slice_{piece.index:03}.wav"), "wb") as file:
                file.setnchannels(info.channels)
                file.setsampwidth(2)
                file.setframerate(info.sample_rate)
                file.writeframes(to_pcm(audio))
            x = WIDTH * piece.quarter / info.quarters
            width = piece.frames / info.sample_rate / info.seconds * WIDTH if info.seconds else 0
            marks.append(f"M{x:.1f},0V{HEIGHT}")
            drawn.append(f'<path transform="translate({x:.1f})" d="{outline(audio, max(1, int(width)))}"/>')
        with open(os.path.join(folder, "loop.svg"), "w", encoding="utf-8") as svg:
            svg.write(
                f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {WIDTH} {HEIGHT}">'
                f'<rect width="{WIDTH}" height="{HEIGHT}" fill="white"/>'
                f'<g stroke="steelblue" stroke-opacity="0.7">{"".join(drawn)}</g>'
                f'<path stroke="crimson" d="{"".join(marks)}"/></svg>\n'
            )
        print(f"{loop_file}: {info.loop_tempo:g} BPM, {len(marks)} slices in {folder}")


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    try:
        main(sys.argv[1], sys.argv[2])
    except (OSError, looplibrary.LoopError) as error:
        sys.exit(f"plot_slices: {error}")
