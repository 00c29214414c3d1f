"""The C functions of the shared library, by ctypes: records, prototypes, and where to find it."""

from __future__ import annotations

import ctypes
import os
import sys
from ctypes import POINTER, c_char, c_float, c_int32, c_uint64, c_void_p
from typing import Optional

CREATE_CALLBACK = ctypes.CFUNCTYPE(c_int32, c_int32, c_void_p)


class Info(ctypes.Structure):
    _fields_ = [
        (name, c_int32)
        for name in (
            "channels",
            "sample_rate",
            "slice_count",
            "stored_tempo",
            "loop_tempo",
            "ppq_length",
            "numerator",
            "denominator",
            "bit_depth",
        )
    ]


class SliceInfo(ctypes.Structure):
    _fields_ = [("ppq_position", c_int32), ("frame_count", c_int32)]


class CreatorInfo(ctypes.Structure):
    _fields_ = [(f"text{index}", c_char * 256) for index in range(1, 6)]


class RenderBuffers(ctypes.Structure):
    _fields_ = [("left", c_void_p), ("right", c_void_p)]


_PROTOTYPES = {
    "LOPInitializeDLL": (c_int32, []),
    "LOPUninitializeDLL": (None, []),
    "LOPCreate": (c_int32, [POINTER(c_uint64), c_void_p, c_int32, CREATE_CALLBACK, c_void_p]),
    "LOPDelete": (None, [POINTER(c_uint64)]),
    "LOPGetInfo": (c_int32, [c_uint64, c_int32, POINTER(Info)]),
    "LOPGetInfoFromBuffer": (c_int32, [c_int32, c_void_p, c_int32, POINTER(Info)]),
    "LOPGetCreatorInfo": (c_int32, [c_uint64, c_int32, POINTER(CreatorInfo)]),
    "LOPGetSliceInfo": (c_int32, [c_uint64, c_int32, c_int32, POINTER(SliceInfo)]),
    "LOPRenderSlice": (c_int32, [c_uint64, c_int32, c_int32, POINTER(RenderBuffers)]),
    "LOPSetOutputSampleRate": (c_int32, [c_uint64, c_int32]),
    "LOPStartPreview": (c_int32, [c_uint64]),
    "LOPStopPreview": (c_int32, [c_uint64]),
    "LOPSetPreviewTempo": (c_int32, [c_uint64, c_int32]),
    "LOPRenderPreviewBatch": (c_int32, [c_uint64, c_int32, POINTER(RenderBuffers)]),
}

_library: Optional[ctypes.CDLL] = None


def library_names() -> list[str]:
    """Where the shared library is looked for, in this order: the environment variable
    LOOPLIBRARY_PATH alone if it is set; beside this package; the system's search path."""
    override = os.environ.get("LOOPLIBRARY_PATH")
    if override:
        return [override]
    name = "LoopLibrary.dll" if sys.platform == "win32" else "libLoopLibrary.so.1"
    return [os.path.join(os.path.dirname(os.path.abspath(__file__)), name), name]


def get() -> ctypes.CDLL:
    """The loaded library. Raises OSError that names every place where it was looked for."""
    global _library
    if _library is None:
        reasons = []
        for name in library_names():
            try:
                loaded = ctypes.CDLL(name)
                break
            except OSError as error:
                reasons.append(f"{name}: {error}")
        else:
            raise OSError("the shared library cannot be loaded; " + "; ".join(reasons))
        for function, (result, arguments) in _PROTOTYPES.items():
            getattr(loaded, function).restype = result
            getattr(loaded, function).argtypes = arguments
        _library = loaded
    return _library
