"""Sliced audio loops: open, inspect, render and preview loop files.

    import looplibrary

    with looplibrary.open("drums.lop2") as loop:
        print(loop.info.loop_tempo, "BPM")
        for piece in loop.slices:
            audio = piece.render()              # audio[0] is the left channel
        for block in loop.preview(tempo=97.5, frames=44100 * 8):
            ...                                 # block[0], block[1]

Audio is 32-bit float, full scale 1.0. With numpy installed it comes as one float32 array of shape
(channels, frames), otherwise as a tuple of array.array("f"), one for each channel; indexing by
channel is the same for both.

The library is initialised when the first loop is opened and stays so to the end of the process, since
daemon threads may use it until then. Calls on different loops
may run side by side on any threads, and give other Python threads way; one loop belongs to one thread
at a time. Every failure is an exception of looplibrary.errors.
"""

from __future__ import annotations

import array
import ctypes
import io
import operator
import os
import threading
from dataclasses import dataclass
from typing import TYPE_CHECKING, Any, Callable, Generator, Optional, Sequence, Union

from . import _native
from .errors import *  # noqa: F401,F403
from .errors import InvalidArgumentError, LoopError, check

try:
    import numpy
except ImportError:
    numpy = None  # type: ignore[assignment]

if TYPE_CHECKING:
    import mmap

__version__ = "1.0.0"
PPQ = 15360
"""Pulses to a quarter note."""

MAX_BATCH_FRAMES = 65536
Audio = Union["numpy.ndarray[Any, Any]", Sequence["array.array[float]"]]
Source = Union[str, "os.PathLike[str]", bytes, bytearray, memoryview, "array.array[Any]", "mmap.mmap"]
Progress = Callable[[int], Optional[bool]]

_lock = threading.Lock()
_initialized = False


def _library() -> ctypes.CDLL:
    """The library, initialised; perhaps by the program that this Python runs in (result 201)."""
    global _initialized
    native = _native.get()
    with _lock:
        if not _initialized:
            result = native.LOPInitializeDLL()
            if result != 201:
                check(result)
            _initialized = True
    return native


@dataclass(frozen=True)
class LoopInfo:
    """What is known of a loop. Tempos are in beats per minute, where a beat is one unit of the time
    signature (an eighth note in 6/8)."""

    channels: int
    sample_rate: int
    slice_count: int
    stored_tempo: float
    loop_tempo: float
    ppq_length: int
    time_signature: tuple[int, int]
    bit_depth: int

    @property
    def quarters(self) -> float:
        """The loop's length in quarter notes."""
        return self.ppq_length / PPQ

    @property
    def beats(self) -> float:
        """The loop's length in beats of its time signature."""
        return self.quarters * self.time_signature[1] / 4

    @property
    def seconds(self) -> float:
        """The loop's length at its own tempo; 0.0 when that is unknown."""
        return self.beats * 60.0 / self.loop_tempo if self.loop_tempo > 0 else 0.0


def _info(record: _native.Info) -> LoopInfo:
    return LoopInfo(
        record.channels,
        record.sample_rate,
        record.slice_count,
        record.stored_tempo / 1000.0,
        record.loop_tempo / 1000.0,
        record.ppq_length,
        (record.numerator, record.denominator),
        record.bit_depth,
    )


_MOST = 0x7FFFFFFF
"""The largest of the C functions' numbers. ctypes cuts off what lies beyond without a word."""


def _number(value: int) -> int:
    """A whole number for a C function: what it cannot hold becomes one that every function refuses.
    Raises TypeError for what is not a whole number."""
    value = operator.index(value)
    return value if 0 <= value <= _MOST else -1


def _read(source: Source) -> tuple[bytes, str]:
    """The bytes of a path or of an object that holds them, and what to call them in a message."""
    if isinstance(source, (str, os.PathLike)):
        name = os.fsdecode(source)
        with io.open(name, "rb") as file:
            data = file.read()
    else:
        name = ""
        data = source if isinstance(source, bytes) else memoryview(source).tobytes()
    if len(data) > _MOST:
        raise InvalidArgumentError(name or f"{len(data)} bytes")
    return data, name


def _allocate(channels: int, frames: int) -> tuple[Audio, _native.RenderBuffers]:
    buffers = _native.RenderBuffers()
    if numpy is not None:
        audio = numpy.zeros((channels, frames), dtype=numpy.float32)
        addresses = [audio[channel].ctypes.data for channel in range(channels)]
    else:
        audio = tuple(array.array("f", bytes(4 * frames)) for _ in range(channels))
        addresses = [channel.buffer_info()[0] for channel in audio]
    buffers.left = addresses[0]
    buffers.right = addresses[1] if channels == 2 else None
    return audio, buffers


def read_info(source: Source) -> LoopInfo:
    """Reads the header of a loop file (its path, or an object that holds its bytes) without decoding its audio. The values
    are those of the file; slice_count need not be what an open loop counts."""
    data, name = _read(source)
    record = _native.Info()
    check(
        _library().LOPGetInfoFromBuffer(len(data), data, ctypes.sizeof(record), ctypes.byref(record)),
        name,
    )
    return _info(record)


def open(source: Source, progress: Optional[Progress] = None) -> Loop:  # noqa: A001
    """Opens a loop file, given by its path or by an object that holds its bytes (bytes, bytearray,
    memoryview, array, mmap), and decodes its audio. `progress` is called
    with a percentage; False stops the load (AbortedError), and an exception in it stops the load
    and is raised here."""
    return Loop(source, progress)


class Slice:
    """A stretch of a loop that plays as one."""

    def __init__(self, loop: Loop, index: int) -> None:
        self.loop = loop
        self.index = index
        record = _native.SliceInfo()
        check(
            _library().LOPGetSliceInfo(
                loop._handle, _number(index), ctypes.sizeof(record), ctypes.byref(record)
            ),
            f"slice {index}",
        )
        self.ppq_position: int = record.ppq_position
        """Its start in pulses from the loop's start."""
        self.frames: int = record.frame_count
        """Frames that render gives, at the output rate of the moment when the slice was asked for."""

    @property
    def quarter(self) -> float:
        """Its start in quarter notes from the loop's start."""
        return self.ppq_position / PPQ

    def render(self) -> Audio:
        """Renders the slice with all settings of the loop at the present output rate: as many
        channels as the loop has. It rings past its cut, and so may overlap the next slice."""
        frames = Slice(self.loop, self.index).frames
        audio, buffers = _allocate(self.loop.info.channels, frames)
        check(
            _library().LOPRenderSlice(
                self.loop._handle, self.index, frames, ctypes.byref(buffers)
            ),
            f"slice {self.index}",
        )
        return audio

    def __repr__(self) -> str:
        return f"<Slice {self.index} at quarter {self.quarter:g}, {self.frames} frames>"


class _Slices(Sequence[Slice]):
    def __init__(self, loop: Loop) -> None:
        self._loop = loop

    def __len__(self) -> int:
        return self._loop.info.slice_count

    def __getitem__(self, index: Any) -> Any:
        if isinstance(index, slice):
            return [Slice(self._loop, at) for at in range(*index.indices(len(self)))]
        index = operator.index(index)
        return Slice(self._loop, index + len(self) if index < 0 else index)


class Loop:
    """An open loop; a context manager that closes it. See looplibrary.open."""

    def __init__(self, source: Source, progress: Optional[Progress] = None) -> None:
        self._handle = ctypes.c_uint64(0)
        native = _library()
        data, name = _read(source)
        thrown: list[BaseException] = []

        def report(percent: int, _: Any) -> int:
            try:
                going_on = progress(percent) if progress and not thrown else None
                return 1 if thrown or (going_on is not None and not going_on) else 0
            except BaseException as error:  # no exception may cross the C code
                thrown.append(error)
                return 1

        callback = _native.CREATE_CALLBACK(report) if progress else _native.CREATE_CALLBACK(0)
        result = native.LOPCreate(ctypes.byref(self._handle), data, len(data), callback, None)
        if thrown:
            self.close()
            raise thrown[0]
        check(result, name)

    def __enter__(self) -> Loop:
        return self

    def __exit__(self, *_: Any) -> None:
        self.close()

    def __reduce_ex__(self, _: Any) -> Any:
        # A copy would close the loop of the original.
        raise TypeError("a loop cannot be copied; open its file again")

    def __del__(self) -> None:
        if getattr(self, "_handle", None):
            self.close()

    def close(self) -> None:
        """Closes the loop; a second call does nothing."""
        if self._handle:
            native = _native.get()
            native.LOPStopPreview(self._handle)
            native.LOPDelete(ctypes.byref(self._handle))
            self._handle = ctypes.c_uint64(0)

    @property
    def info(self) -> LoopInfo:
        record = _native.Info()
        check(_library().LOPGetInfo(self._handle, ctypes.sizeof(record), ctypes.byref(record)))
        return _info(record)

    @property
    def creator_texts(self) -> Optional[tuple[str, ...]]:
        """Five texts in the file's order, or None when the loop holds none. Lines of a text are
        separated by U+2029."""
        record = _native.CreatorInfo()
        result = _library().LOPGetCreatorInfo(
            self._handle, ctypes.sizeof(record), ctypes.byref(record)
        )
        if result == 3:
            return None
        check(result)
        return tuple(getattr(record, name).decode("utf-8") for name, _ in record._fields_)

    @property
    def slices(self) -> Sequence[Slice]:
        """The slices in the order of time: iterate, index, or take len()."""
        return _Slices(self)

    def set_output_sample_rate(self, rate: int) -> None:
        """Sets the rate of slices and preview in frames per second, 11025 to 1000000; until then it
        is that of the stored audio. Not while a preview runs."""
        check(
            _library().LOPSetOutputSampleRate(self._handle, _number(rate)),
            f"{rate} frames per second",
        )

    def preview(
        self, tempo: Optional[float] = None, frames: Optional[int] = None, block: int = 4096
    ) -> Generator[Audio, Optional[float], None]:
        """Plays the loop from its start, round and round, and yields blocks of two channels of
        `block` frames (1 to 65536), the last one shorter, `frames` in all or without end. `tempo` is
        in beats per minute, 20 to 450, by default the stored one; send() to the iterator or
        set_preview_tempo changes it on the way. The preview stops when the iterator ends or is
        closed."""
        block = operator.index(block)
        if frames is not None:
            frames = operator.index(frames)
        if not 1 <= block <= MAX_BATCH_FRAMES:
            raise InvalidArgumentError(f"block of {block} frames")
        native = _library()
        if tempo is not None:
            self.set_preview_tempo(tempo)
        return self._pull(native, frames, block)

    def _pull(
        self, native: ctypes.CDLL, frames: Optional[int], block: int
    ) -> Generator[Audio, Optional[float], None]:
        check(native.LOPStartPreview(self._handle), "preview")
        try:
            while frames is None or frames > 0:
                count = block if frames is None else min(block, frames)
                audio, buffers = _allocate(2, count)
                check(
                    native.LOPRenderPreviewBatch(self._handle, count, ctypes.byref(buffers)),
                    "preview",
                )
                if frames is not None:
                    frames -= count
                tempo = yield audio
                if tempo is not None:
                    self.set_preview_tempo(tempo)
        finally:
            if native.LOPStopPreview(self._handle) == 1:
                # The stop must reach the audio before the next start.
                _, buffers = _allocate(2, 64)
                native.LOPRenderPreviewBatch(self._handle, 64, ctypes.byref(buffers))

    def set_preview_tempo(self, tempo: float) -> None:
        """Changes the preview's tempo, 20 to 450 beats per minute, also while it plays."""
        thousandths = round(tempo * 1000) if abs(tempo) < 1e6 else 0
        check(_library().LOPSetPreviewTempo(self._handle, thousandths), f"{tempo} BPM")
