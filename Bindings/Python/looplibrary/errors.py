"""One exception class for each result of the library; all derive from LoopError."""

from __future__ import annotations


class LoopError(Exception):
    """A call of the library failed. `result` is its number (LOPResult of the C header)."""

    result = 666
    message = "an unexpected failure"

    def __init__(self, subject: str = "") -> None:
        super().__init__(f"{subject}: {self.message}" if subject else self.message)


class AbortedError(LoopError):
    result, message = 2, "the load was stopped by its progress function"


class OutOfMemoryError(LoopError, MemoryError):
    result, message = 105, "memory ran out"


class FileCorruptError(LoopError, ValueError):
    result, message = 106, "not a loop file, or a damaged one"


class FileTooNewError(LoopError, ValueError):
    result, message = 107, "written by a newer version of the format"


class ZeroLoopLengthError(LoopError, ValueError):
    result, message = 108, "the loop's musical length is zero"


class NotInitializedError(LoopError):
    result, message = 200, "the library is not initialised"


class AlreadyInitializedError(LoopError):
    result, message = 201, "the library is initialised already"


class InvalidHandleError(LoopError, ValueError):
    result, message = 202, "the loop is closed"


class InvalidSizeError(LoopError, ValueError):
    result, message = 203, "a record's size is too small"


class InvalidArgumentError(LoopError, ValueError):
    result, message = 204, "a required pointer or count is wrong"


class InvalidSliceError(LoopError, IndexError):
    result, message = 205, "the slice index is out of range"


class InvalidSampleRateError(LoopError, ValueError):
    result, message = 206, "the output rate is out of range"


class BufferTooSmallError(LoopError, ValueError):
    result, message = 207, "the buffer holds fewer frames than the slice"


class PreviewRunningError(LoopError):
    result, message = 208, "the operation needs a stopped preview"


class PreviewNotRunningError(LoopError):
    result, message = 209, "the operation needs a running preview"


class InvalidTempoError(LoopError, ValueError):
    result, message = 210, "the preview tempo is out of range"


_BY_RESULT = {kind.result: kind for kind in LoopError.__subclasses__()}


def check(result: int, subject: str = "") -> None:
    """Raises the exception of a result; 1 is success."""
    if result != 1:
        raise _BY_RESULT.get(result, LoopError)(subject)
