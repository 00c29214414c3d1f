#!/usr/bin/env python3
"""Makes drum loops from single real hits, with the truth beside them, to measure what looptool hears.

usage: drum_loops.py HITS FOLDER COUNT [SEED]

HITS holds one-shot recordings (ogg or wav; Debian's lmms-common has a folder of them), which sox reads.
Each loop becomes N.wav and N.json: tempo, bars, beats of a bar, and for each hit its frame and whether
it stands alone (no other hit within 120 ms).
"""

import json
import os
import random
import subprocess
import sys
import wave

import numpy

RATE = 44100
KINDS = {
    "kick": ("bassdrum", "kick"),
    "snare": ("snare", "clap", "nasty_snare"),
    "hat": ("hihat_closed", "shaker"),
    "open": ("hihat_opened", "ride"),
    "perc": ("tom", "rim", "sidestick", "wood", "clav"),
}


def load_hits(folder):
    """Arrays by kind, each from the frame where its sound begins (40 dB below its peak)."""
    hits = {kind: [] for kind in KINDS}
    for name in sorted(os.listdir(folder)):
        raw = subprocess.run(
            ["sox", os.path.join(folder, name), "-r", str(RATE), "-c", "1", "-t", "f32", "-"],
            stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
        ).stdout
        sound = numpy.frombuffer(raw, dtype="<f4").astype(float)
        if not len(sound):
            continue  # not audio
        peak = abs(sound).max()
        sound = sound[numpy.argmax(abs(sound) > peak / 100) :] / peak
        for kind, prefixes in KINDS.items():
            if name.startswith(prefixes):
                hits[kind].append(sound)
    return hits


def pattern(rng, beats):
    """(sixteenth, kind, level) of one bar."""
    steps = []
    for step in range(beats * 4):
        beat, part = divmod(step, 4)
        if part == 0 and (beat in (0, 2) if beats == 4 else beat == 0) or rng.random() < (
            0.05, 0.08, 0.15, 0.06)[part]:
            if step == 0 or rng.random() < 0.9:
                steps.append((step, "kick", rng.uniform(0.7, 1.0)))
        if part == 0 and (beat in (1, 3) if beats == 4 else beat in (1, 2)):
            if rng.random() < 0.92:
                steps.append((step, "snare", rng.uniform(0.6, 1.0)))
        elif part % 2 == 1 and rng.random() < 0.05:
            steps.append((step, "snare", rng.uniform(0.2, 0.4)))
        if rng.random() < 0.04:
            steps.append((step, "perc", rng.uniform(0.4, 0.9)))
    grid = rng.choice((4, 2, 2, 2, 1))
    for step in range(0, beats * 4, grid):
        if rng.random() < 0.93:
            kind = "open" if rng.random() < 0.05 else "hat"
            steps.append((step, kind, rng.uniform(0.25, 0.6)))
    return steps


def make_loop(rng, hits):
    tempo = rng.uniform(72.0, 178.0)
    beats = rng.choice((4, 4, 4, 3))
    bars = rng.choice((1, 2, 2, 4))
    swing = rng.choice((0.5, 0.5, rng.uniform(0.54, 0.67)))
    beat_frames = 60.0 * RATE / tempo
    frames = round(beat_frames * beats * bars)
    kit = {kind: rng.choice(sounds) for kind, sounds in hits.items()}
    audio = numpy.zeros(frames)
    placed = set()
    base = pattern(rng, beats)
    for bar in range(bars):
        for step, kind, level in base if rng.random() < 0.7 else pattern(rng, beats):
            beat, part = divmod(step, 4)
            # Swing moves the second and fourth sixteenth, or the offbeat eighth, late.
            place = (0.0, swing / 2, 0.5, 0.5 + swing / 2)[part]
            at = (bar * beats + beat + place) * beat_frames + rng.gauss(0, 0.001) * RATE
            at = max(0, round(at)) % frames
            sound = kit[kind] * level
            for start in range(0, len(sound), frames):  # a tail goes round
                part_of = sound[start : start + frames]
                where = (at + numpy.arange(len(part_of))) % frames
                audio[where] += part_of
            placed.add(at)
    audio *= rng.uniform(0.3, 0.9) / abs(audio).max()
    audio += numpy.random.default_rng(rng.randrange(1 << 30)).normal(0, 1e-4, frames)
    onsets = []
    for at in sorted(placed):
        if not onsets or at - onsets[-1] > 0.02 * RATE:
            onsets.append(at)
    truth = {"tempo": tempo, "bars": bars, "beats": beats, "onsets": []}
    for index, at in enumerate(onsets):
        before = (at - onsets[index - 1]) % frames or frames
        after = (onsets[(index + 1) % len(onsets)] - at) % frames or frames
        truth["onsets"].append([at, min(before, after) > 0.12 * RATE])
    return audio, truth


def main(folder, out, count, seed="1"):
    rng = random.Random(int(seed))
    hits = load_hits(folder)
    os.makedirs(out, exist_ok=True)
    for number in range(int(count)):
        audio, truth = make_loop(rng, hits)
        with wave.open(os.path.join(out, f"{number:04}.wav"), "wb") as file:
            file.setnchannels(1)
            file.setsampwidth(2)
            file.setframerate(RATE)
            file.writeframes((audio * 32767).round().astype("<i2").tobytes())
        with open(os.path.join(out, f"{number:04}.json"), "w", encoding="utf-8") as file:
            json.dump(truth, file)


if __name__ == "__main__":
    if len(sys.argv) not in (4, 5):
        sys.exit(__doc__)
    main(*sys.argv[1:])
