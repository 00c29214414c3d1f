#!/usr/bin/env python3
"""Reads loops that looptool makes by the tables of Docs/FileKinds.md alone, and by a decoder written
from its text: a second way to the file format beside the library's readers and writers. Then plants
values at and beyond the ends of every range that a table states and lets looptool load them.

Usage: layout_test.py LOOPTOOL DOCUMENT
"""
import json
import os
import re
import struct
import subprocess
import sys
import tempfile
import wave

LOOPTOOL, DOCUMENT = sys.argv[1:]
NUMBERS = {"u8": ">B", "u16": ">H", "u32": ">I", "i16": ">h", "i32": ">i", "flag": ">?"}


def read_tables():
    """Chunk id to its rows: offset or None, type, field, text on its values."""
    tables = {}
    for line in open(DOCUMENT, encoding="utf-8"):
        if line.startswith("## "):
            rows = tables.setdefault(line[3:].strip().ljust(4), [])
        cells = [cell.strip() for cell in line.strip().strip("|").split("|")]
        if len(cells) == 4 and re.fullmatch(r"\d+|-", cells[0]):
            rows.append((int(cells[0]) if cells[0] != "-" else None, *cells[1:]))
    return {name: rows for name, rows in tables.items() if rows}


def read_chunks(data, start, end):
    """Id or group type to (first byte, size) pairs, of all levels."""
    chunks = {}
    while start + 8 <= end:
        name, size = struct.unpack_from(">4sI", data, start)
        if name == b"CAT ":
            kind = data[start + 8 : start + 12].decode()
            chunks.setdefault(kind, []).append((start + 12, size - 4))
            for inner, places in read_chunks(data, start + 12, start + 8 + size).items():
                chunks.setdefault(inner, []).extend(places)
        else:
            chunks.setdefault(name.decode(), []).append((start + 8, size))
        start += 8 + size + size % 2
    assert start == end, "chunks do not fill their group"
    return chunks


def read_text(data, at):
    count = struct.unpack_from(">I", data, at)[0]
    coding = "cp1252"
    if count == 0xFFFFFFFF:
        assert data[at + 4 : at + 9] == bytes([188, 1, 0, 0, 0])
        count, at, coding = struct.unpack_from(">I", data, at + 9)[0], at + 9, "utf-8"
    return data[at + 4 : at + 4 + count].decode(coding), at + 4 + count


def read_chunk(data, place, rows):
    """Field to value. Every field stands where the table says and none is left over."""
    at = place[0]
    fields = {}
    for offset, kind, name, _ in rows:
        assert offset is None or at == place[0] + offset, f"{name} at {at - place[0]}"
        if kind in NUMBERS:
            fields[name] = struct.unpack_from(NUMBERS[kind], data, at)[0]
            at += struct.calcsize(NUMBERS[kind])
        elif kind == "zeros":
            assert data[at : at + 16] == bytes(16)
            at += 16
        elif kind == "version":
            assert data[at] == 188
            fields[name] = tuple(data[at + 1 : at + 4])
            at += 5
        else:
            assert kind == "text", kind
            fields[name], at = read_text(data, at)
    assert at == sum(place), f"{sum(place) - at} bytes behind the last field"
    return fields


def decode(stream, frames, channels):
    """The samples of "SDAT", frame by frame, and the bits that they take."""
    bits = "".join(f"{byte:08b}" for byte in stream)
    at = 0
    states = [([0] * 5, [2560] * 5) for _ in range(channels)]
    samples = []
    for _ in range(frames):
        sample = 0
        for value, energy in states:
            k = energy.index(min(energy))
            step = (energy[k] + 12) * 3 >> 7
            one = bits.index("1", at)
            folded = 0
            for zeros in range(1, one - at + 1):
                folded += step
                step *= 4 if zeros % 7 == 0 else 1
            at = one + 1
            n = step.bit_length() - 1
            short = (2 << n) - step
            rest = int(bits[at : at + n] or "0", 2)
            at += n
            if rest >= short:
                rest = 2 * rest - short + int(bits[at])
                at += 1
            folded += rest
            new = folded // 2 if folded % 2 == 0 else -(folded + 1) // 2
            for i in range(k, 5):
                value[i], new = new, new - value[i]
            for i in range(k - 1, -1, -1):
                value[i] += value[i + 1]
            for i in range(5):
                energy[i] += (2 * value[i] if value[i] >= 0 else -2 * value[i] - 1) - (energy[i] >> 5)
            sample += value[0]
            samples.append(sample)
    return samples, at


def looptool(*arguments):
    return subprocess.run([LOOPTOOL, *arguments], capture_output=True, text=True, check=True).stdout


def check_reading(tables):
    texts = ["plain", "caf\u00e9", "\u65e5\u672c", "", "last"]
    for bits, channels in ((16, 1), (16, 2), (24, 2)):
        with wave.open("in.wav", "wb") as out:
            out.setparams((channels, bits // 8, 8000, 0, "NONE", ""))
            noise = [(i * 7919 % 20011 - 10005) * (40 if bits == 24 else 1) >> i % 13 for i in range(12000)]
            out.writeframes(b"".join(s.to_bytes(bits // 8, "little", signed=True) for s in noise))
        settings = ["--gain", "5000", "--transpose", "-700", "--equalizer-band2-gain", "-9000"]
        settings += [option for text in texts for option in ("--text", text)]
        looptool("make", "in.wav", "-o", "loop.lop2", "--force", "--bars", "1", "--beats", "1",
                 "--signature", "3/4", "--slices", "0,1000,2500", *settings)
        info = json.loads(looptool("info", "loop.lop2", "--settings", "--json"))
        looptool("decode", "loop.lop2", "-o", "out.wav")
        data = open("loop.lop2", "rb").read()
        chunks = read_chunks(data, 0, len(data))
        fields = {name: read_chunk(data, chunks[name][0], rows) for name, rows in tables.items() if name in chunks}
        assert set(chunks) - set(fields) == {"LOP2", "DEVL", "SLCL", "SDAT"}, chunks
        assert fields["HEAD"]["version"] == (2, 0, 0) and fields["HEAD"]["magic"] == 0x490CF18D
        assert list(fields["CREI"].values()) == texts == info["creator_texts"]
        general, audio = fields["GLOB"], fields["SINF"]
        assert (general["bars"], general["beats"]) == (1, 1) and general["tempo"] == info["stored_tempo"] * 1000
        assert (general["gain"], general["transpose"], general["signature_numerator"]) == (5000, -700, 3)
        assert fields["EQ  "]["band2_gain"] == -9000 and fields["EQ  "]["high_cut"] == 20000
        positions = [read_chunk(data, place, tables["SLCE"])["position"] for place in chunks["SLCE"]]
        assert positions == [0, 1000, 2500] and general["slice_count"] == 3
        assert (audio["channels"], audio["frames"], audio["sample_rate"]) == (channels, 12000 // channels, 8000)
        start, size = chunks["SDAT"][0]
        samples, used = decode(data[start : start + size], audio["frames"], audio["channels"])
        assert samples == noise and size == (used + 31) // 32 * 4
        with wave.open("out.wav", "rb") as out:
            stored = out.readframes(out.getnframes())
        assert stored == b"".join(s.to_bytes(bits // 8, "little", signed=True) for s in noise)


def check_dump():
    with wave.open("silence.wav", "wb") as out:
        out.setparams((1, 2, 1000, 0, "NONE", ""))
        out.writeframes(bytes(2000))
    looptool("make", "silence.wav", "-o", "silence.lop2", "--bars", "1", "--text", "Silence")
    data = open("silence.lop2", "rb").read()
    lines = re.findall(r"^([0-9a-f]{8})  ([0-9a-f ]{48})", open(DOCUMENT, encoding="utf-8").read(), re.M)
    assert len(lines) > 10
    for at, row in lines:
        assert data[int(at, 16) :].startswith(bytes.fromhex(row)), at


def check_ranges(tables):
    """Plants values in a loop and expects OK of those within the tables' ranges alone."""
    data = open("loop.lop2", "rb").read()
    chunks = read_chunks(data, 0, len(data))
    expected = {}
    os.mkdir("planted")

    def plant(chunk, row, value, good):
        code = NUMBERS[row[1]]
        try:
            packed = struct.pack(code, value)
        except struct.error:
            return  # the type's own range is no wider
        at = chunks[chunk][0][0] + row[0]
        name = f"{chunk.strip()}-{row[2]}-{value}.lop2"
        with open(os.path.join("planted", name), "wb") as out:
            out.write(data[:at] + packed + data[at + len(packed) :])
        expected[name] = good

    for chunk, rows in tables.items():
        for row in rows if chunk in chunks else []:
            ends = re.match(r"(-?\d+) to (-?\d+)", row[3])
            if ends and row[2] != "channels":  # the stream is that of its channels
                low, high = (int(end) for end in ends.groups())
                for value in (low, high):
                    plant(chunk, row, value, not (row[2] == "flags" and value == 7))
                plant(chunk, row, low - 1, False)
                plant(chunk, row, high + 1, False)
            elif row[3].startswith("one of"):
                values = [int(value) for value in re.findall(r"\b\d+\b(?! bits)", row[3])]
                for value in range(16):
                    plant(chunk, row, value, value in values)
    assert len(expected) > 70, len(expected)
    lines = subprocess.run([LOOPTOOL, "check", "planted"], capture_output=True, text=True).stdout
    for name, good in expected.items():
        line = next(line for line in lines.splitlines() if name in line)
        assert line.startswith("OK") == good, line


def main():
    tables = read_tables()
    with tempfile.TemporaryDirectory() as folder:
        os.chdir(folder)
        check_dump()
        check_reading(tables)
        check_ranges(tables)


DOCUMENT = os.path.abspath(DOCUMENT)
LOOPTOOL = os.path.abspath(LOOPTOOL)
main()
