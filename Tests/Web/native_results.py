#!/usr/bin/env python3
"""Writes as JSON what the native library answers to each file of a folder, in the order of their names.

usage: native_results.py FOLDER
"""

import hashlib
import json
import pathlib
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "Bindings/Python"))

import looplibrary  # noqa: E402


def outcome(action):
    """What an action gives, or the number of its failure."""
    try:
        return action()
    except looplibrary.LoopError as error:
        return error.result


def described(info):
    return [info.channels, info.sample_rate, info.slice_count, info.stored_tempo, info.loop_tempo,
            info.ppq_length, *info.time_signature, info.bit_depth]


def hash_of(planes):
    digest = hashlib.sha1()
    for plane in planes:
        digest.update(memoryview(plane).cast("B"))
    return digest.hexdigest()


def used(data):
    with looplibrary.open(data) as loop:
        slices = list(loop.slices)
        short = [piece for piece in slices if piece.frames < 100000]
        preview = next(loop.preview(frames=3000))
        return {
            "info": described(loop.info),
            "slices": [[piece.ppq_position, piece.frames] for piece in slices],
            "texts": outcome(lambda: loop.creator_texts),
            "preview": hash_of(preview),
            "slice": hash_of(short[-1].render()) if short else None,
        }


def main(folder):
    rows = {}
    for path in sorted(pathlib.Path(folder).iterdir()):
        data = path.read_bytes()
        rows[path.name] = [outcome(lambda: described(looplibrary.read_info(data))),
                           outcome(lambda: used(data))]
    json.dump(rows, sys.stdout)


if __name__ == "__main__":
    main(*sys.argv[1:])
