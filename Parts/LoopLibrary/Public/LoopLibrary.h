/*
 * LoopLibrary: sliced audio loops for hosts. The one public header; C99 and C++.
 *
 * A host initialises the library once, hands LOPCreate the bytes of a loop file, gets a handle, and
 * then reads the loop's length, tempo, slices and texts, renders any slice at any output rate, or
 * pulls a preview of the whole loop at its own tempo from its audio thread.
 *
 *     LOPHandle loop = 0;
 *     LOPInitializeDLL();
 *     if (LOPCreate(&loop, bytes, size, NULL, NULL) == kLOPResult_OK) {
 *         LOPInfo info;
 *         LOPGetInfo(loop, (int32_t)sizeof info, &info);
 *         ...
 *         LOPDelete(&loop);
 *     }
 *     LOPUninitializeDLL();
 *
 * Results.   Every call but two answers an LOPResult: kLOPResult_OK (1) or what went wrong. The
 *            checks of a call are made in the order in which its results are listed here, and the
 *            first that fails decides. There is no "last error" to ask for.
 *
 * Memory.    The library copies what it needs: the file's bytes may be freed when LOPCreate has
 *            returned, and are never written. Records and audio buffers belong to the host. The
 *            records that the library fills carry a size chosen by the host; that many bytes are
 *            zeroed and then filled with what the library has.
 *
 * Audio.     32-bit float, full scale 1.0, one array for each channel, clipped to -1.0 to 1.0.
 *
 * Units.     Tempos are thousandths of a beat per minute (120000 is 120 BPM). A beat is one unit of
 *            the time signature, whatever its note value: a loop in 6/8 at 90 quarter notes a
 *            minute has a tempo of 180000. Musical positions are pulses, LOP_PPQ (15360) to a
 *            quarter note, so LOP_PPQ * 4 / fTimeSignatureDenominator to a beat:
 *            seconds = pulses * fTimeSignatureDenominator / (4 * LOP_PPQ) * 60000 / tempo.
 *            Frames are at the present output rate unless a text says otherwise.
 *
 * Slices.    A slice is a stretch of the loop that plays as one: from a cut, or the loop's start,
 *            to the next cut or the loop's end. They are numbered from 0 in the order of time;
 *            muted ones that the file drops are not counted. A file may ask for the loop in one
 *            piece: its only slice is the whole loop at the file's tempo.
 *
 * In time.   The preview is for listening. It starts slices on a grid of 64 frames, no two in one
 *            step of it, so its passes differ by some frames from what the tempo says, by more
 *            where slices crowd, and the differences add up. A host that must stay in time with
 *            something else renders the slices and places each at its fPPQPosition itself.
 *
 * Threads.   The library starts no thread. Calls on different loops may run side by side on any
 *            threads. On one loop, one thread may pull LOPRenderPreviewBatch while others call
 *            LOPSetPreviewTempo, LOPStartPreview, LOPStopPreview, LOPGetInfo, LOPGetSliceInfo and
 *            LOPGetCreatorInfo, and one of them LOPRenderSlice. A host must not: delete a loop, or
 *            uninitialise the library, while another thread uses it; run two slice renders of one
 *            loop at once; pull batches of one loop from two threads at once (the later call is
 *            answered with silence); initialise and uninitialise from two threads; cancel or end
 *            a thread inside a call. After a fork while another thread was in a call, the child
 *            must not use the library: a lock may be taken there for good.
 *
 * Real time. "Audio thread: yes" marks a call that allocates nothing, opens nothing and waits for
 *            one lock alone, at the look-up of its handle: for a moment while another thread looks
 *            one up, and until the end of a LOPCreate or LOPDelete on another thread, which takes
 *            seconds for a long file. On Linux the thread that holds the lock has the priority of
 *            the audio thread meanwhile. Load and delete loops while no preview is pulled, or
 *            accept that wait. All calls with a handle wait so, LOPStartPreview and LOPStopPreview
 *            too: a preview that is started while another loop loads begins when that is done.
 *
 * Rounding.  Loads and renders work in the default floating-point mode, create callbacks included,
 *            and give the host's mode back: it does not change the samples.
 */
#ifndef LOOPLIBRARY_H
#define LOOPLIBRARY_H

#include <stdint.h>

#define LOOPLIBRARY_VERSION_MAJOR 1
#define LOOPLIBRARY_VERSION_MINOR 0
#define LOOPLIBRARY_VERSION_PATCH 0

/* Whether this header is of the given version or a later one. */
#define LOOPLIBRARY_VERSION_AT_LEAST(major, minor, patch)                                          \
    (LOOPLIBRARY_VERSION_MAJOR > (major) ||                                                        \
     (LOOPLIBRARY_VERSION_MAJOR == (major) &&                                                      \
      (LOOPLIBRARY_VERSION_MINOR > (minor) ||                                                      \
       (LOOPLIBRARY_VERSION_MINOR == (minor) && LOOPLIBRARY_VERSION_PATCH >= (patch)))))

#if defined(_WIN32)
#if defined(LOOPLIBRARY_BUILDING)
#define LOP_API __declspec(dllexport)
#else
#define LOP_API __declspec(dllimport)
#endif
#elif defined(__GNUC__)
#define LOP_API __attribute__((visibility("default")))
#else
#define LOP_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Results -------------------------------------------------------------------------------- */

typedef int32_t LOPResult;

enum {
    kLOPResult_OK = 1,                   /* success */
    kLOPResult_Aborted = 2,              /* the create callback stopped the load */
    kLOPResult_NoCreatorInfo = 3,        /* the loop holds no creator texts; the record is zeroed */
    kLOPResult_OutOfMemory = 105,        /* memory ran out */
    kLOPResult_FileCorrupt = 106,        /* no loop file, or a damaged one */
    kLOPResult_FileTooNew = 107,         /* written by a newer version of the format */
    kLOPResult_ZeroLoopLength = 108,     /* the loop's musical length is zero */
    kLOPResult_NotInitialized = 200,     /* LOPInitializeDLL has not succeeded */
    kLOPResult_AlreadyInitialized = 201, /* LOPInitializeDLL was called twice */
    kLOPResult_InvalidHandle = 202,      /* the handle names no open loop */
    kLOPResult_InvalidSize = 203,        /* a record's size is too small */
    kLOPResult_InvalidArgument = 204,    /* a required pointer or count is wrong */
    kLOPResult_InvalidSlice = 205,       /* the slice index is out of range */
    kLOPResult_InvalidSampleRate = 206,  /* the output rate is out of range */
    kLOPResult_BufferTooSmall = 207,     /* the buffer holds fewer frames than the slice */
    kLOPResult_PreviewRunning = 208,     /* the operation needs a stopped preview */
    kLOPResult_PreviewNotRunning = 209,  /* the operation needs a running preview */
    kLOPResult_InvalidTempo = 210,       /* the preview tempo is out of range */
    kLOPResult_Undefined = 666           /* a failure that maps to nothing above */
};

/* ---- Limits --------------------------------------------------------------------------------- */

#define LOP_PPQ 15360               /* pulses to a quarter note */
#define LOP_MIN_SAMPLE_RATE 11025   /* lowest output rate, frames per second */
#define LOP_MAX_SAMPLE_RATE 1000000 /* highest output rate, frames per second */
#define LOP_MIN_TEMPO 20000         /* lowest preview tempo, 20 BPM */
#define LOP_MAX_TEMPO 450000        /* highest preview tempo, 450 BPM */
#define LOP_MAX_BATCH_FRAMES 65536  /* most frames of one LOPRenderPreviewBatch */

/* ---- Records -------------------------------------------------------------------------------- */

/* Opaque token of an open loop; 0 names none. A stale handle is recognised, except when a new loop
 * has come to stand at the old one's address. */
typedef uint64_t LOPHandle;

/* 36 bytes; hosts that know nothing of fBitDepth pass 32. */
typedef struct LOPInfo {
    int32_t fChannels;                 /* 1 or 2 */
    int32_t fSampleRate;               /* frames per second of the stored audio */
    int32_t fSliceCount;               /* slices that LOPRenderSlice takes */
    int32_t fStoredTempo;              /* tempo stored in the file */
    int32_t fLoopTempo;                /* tempo that follows from the loop's frames and beats: 0
                                        * to 999999, so it need not be a valid preview tempo */
    int32_t fPPQLength;                /* the loop's length in pulses */
    int32_t fTimeSignatureNumerator;   /* beats of a bar */
    int32_t fTimeSignatureDenominator; /* note value of a beat */
    int32_t fBitDepth;                 /* 8, 16, 20, 22, 24 or 32; 0 for any other depth */
} LOPInfo;

/* 8 bytes. */
typedef struct LOPSliceInfo {
    int32_t fPPQPosition; /* start of the slice in pulses from the loop's start */
    int32_t fFrameCount;  /* frames that LOPRenderSlice delivers at the present output rate */
} LOPSliceInfo;

/* 1280 bytes: five UTF-8 texts in the order in which the file stores them, each at most 255 bytes
 * and a terminating zero, never cut inside a character. Lines are parted by U+2029 (E2 80 A9). */
typedef struct LOPCreatorInfo {
    char fText1[256];
    char fText2[256];
    char fText3[256];
    char fText4[256];
    char fText5[256];
} LOPCreatorInfo;

/* 16 bytes on 64-bit systems. Where the library writes audio; the arrays are the host's. */
typedef struct LOPRenderBuffers {
    float* fLeft;
    float* fRight;
} LOPRenderBuffers;

/*
 * Progress of LOPCreate, called on the thread of that call with a percentage and the host's own
 * pointer. The percentage rises and is 100 in the last report; on the way there a damaged .lop may
 * report any number. A result of exactly 1 stops the load at any report but the last; every other
 * result lets it go on.
 *
 * The library is locked meanwhile. The callback may call other exports on this thread (LOPGetInfo
 * of another loop, say), but must not wait for another thread that does, and must not call
 * LOPUninitializeDLL. It must return: an exception or a jump out of it may leave the library locked
 * for good, and ending its thread (pthread_exit, a cancellation that arrives there) ends the
 * process.
 */
typedef int32_t (*LOPCreateCallback)(int32_t percent, void* userData);

/* ---- Life of the library -------------------------------------------------------------------- */

/*
 * Makes the library ready. Call once, before anything else, while no other call runs.
 *
 * Results: kLOPResult_AlreadyInitialized, when it is ready (nothing changes);
 *          kLOPResult_OutOfMemory; kLOPResult_Undefined, when the library cannot find its own file;
 *          kLOPResult_OK. After a failure it may be called again.
 * Audio thread: no.
 */
LOP_API LOPResult LOPInitializeDLL(void);

/*
 * Destroys all loops that are left, running previews among them, and ends the library; afterwards
 * LOPInitializeDLL may be called again. Does nothing when the library is not initialised. Call it
 * while no other call runs, and not from a create callback.
 * Audio thread: no.
 */
LOP_API void LOPUninitializeDLL(void);

/* ---- Loops and their data ------------------------------------------------------------------- */

/*
 * Opens the loop file whose bytes stand at `buffer` and decodes its audio.
 *
 * handle    not null; receives the new handle, or 0 when the load fails after the argument check
 * buffer    not null; `size` bytes, only read, not kept
 * size      bytes, at least 1
 * callback  may be null: no progress reports
 * userData  passed to the callback as it is
 *
 * Results: kLOPResult_NotInitialized; kLOPResult_InvalidArgument; kLOPResult_FileCorrupt;
 *          kLOPResult_FileTooNew; kLOPResult_Aborted; kLOPResult_ZeroLoopLength;
 *          kLOPResult_OutOfMemory; kLOPResult_Undefined; kLOPResult_OK. What is wrong with a file
 *          shows in the order in which it is read, not in the order of this list: a file with two
 *          faults answers for the one that is met first.
 * Audio thread: no. Other threads' calls with handles wait until the load is over.
 */
LOP_API LOPResult LOPCreate(LOPHandle* handle, const void* buffer, int32_t size,
                            LOPCreateCallback callback, void* userData);

/*
 * Closes a loop and sets `*handle` to 0. Does nothing, silently, and leaves `*handle` alone when
 * the library is not initialised, `handle` is null, `*handle` names no open loop, or the loop's
 * preview runs: stop the preview first. Audio thread: no.
 */
LOP_API void LOPDelete(LOPHandle* handle);

/*
 * Fills `info` with what is known of the loop; values out of range in the file are clamped.
 * fLoopTempo is worked out with the clamped sample rate.
 *
 * size  bytes of the record, at least 32; fBitDepth is written from 36 on; all `size` bytes are
 *       zeroed first
 *
 * Results: kLOPResult_NotInitialized; kLOPResult_InvalidHandle; kLOPResult_InvalidArgument, when
 *          `info` is null; kLOPResult_InvalidSize; kLOPResult_Undefined; kLOPResult_OK.
 * Audio thread: no.
 */
LOP_API LOPResult LOPGetInfo(LOPHandle handle, int32_t size, LOPInfo* info);

/*
 * Like LOPGetInfo, but reads the bytes of a file, decodes no audio, makes no loop and takes no
 * lock. Values are those of the file, not clamped: fSliceCount is what the file states, and need
 * not be what LOPGetInfo counts; fLoopTempo is worked out with the sample rate as stored.
 *
 * bufferSize  bytes of the file at `buffer`, at least 1
 * size        bytes of the record, at least 32; fBitDepth is written from 36 on
 *
 * Results: kLOPResult_NotInitialized; kLOPResult_InvalidArgument, when `bufferSize` is below 1 or a
 *          pointer is null; kLOPResult_InvalidSize, when `size` is below 32; kLOPResult_FileCorrupt
 *          for bytes of no known kind, with `info` untouched. From here on all `size` bytes are
 *          zeroed first: kLOPResult_FileCorrupt or kLOPResult_FileTooNew, when the file's info
 *          cannot be read; kLOPResult_ZeroLoopLength, or kLOPResult_FileCorrupt for a time
 *          signature over 0, with fChannels, fSampleRate and fSliceCount filled;
 *          kLOPResult_OutOfMemory; kLOPResult_Undefined; kLOPResult_OK.
 * Audio thread: no. May run beside every other call but LOPInitializeDLL and LOPUninitializeDLL.
 */
LOP_API LOPResult LOPGetInfoFromBuffer(int32_t bufferSize, const void* buffer, int32_t size,
                                       LOPInfo* info);

/*
 * Fills `info` with the five creator texts.
 *
 * size  bytes of the record, at least 1280; all `size` bytes are zeroed first
 *
 * Results: kLOPResult_NotInitialized; kLOPResult_InvalidHandle; kLOPResult_InvalidArgument, when
 *          `info` is null; kLOPResult_InvalidSize; kLOPResult_NoCreatorInfo, with the record
 *          zeroed; kLOPResult_FileCorrupt, when a text is not Unicode, with the texts before
 *          it filled; kLOPResult_OutOfMemory; kLOPResult_Undefined; kLOPResult_OK.
 * Audio thread: no.
 */
LOP_API LOPResult LOPGetCreatorInfo(LOPHandle handle, int32_t size, LOPCreatorInfo* info);

/*
 * Tells where a slice starts and how many frames it renders to at the present output rate. Neither
 * depends on the preview's tempo.
 *
 * sliceIndex  0 to fSliceCount - 1 of LOPGetInfo
 * size        bytes of the record, at least 8; all `size` bytes are zeroed first
 *
 * Results: kLOPResult_NotInitialized; kLOPResult_InvalidHandle; kLOPResult_InvalidArgument, when
 *          `info` is null; kLOPResult_InvalidSize; kLOPResult_InvalidSlice; kLOPResult_Undefined;
 *          kLOPResult_OK.
 * Audio thread: no.
 */
LOP_API LOPResult LOPGetSliceInfo(LOPHandle handle, int32_t sliceIndex, int32_t size,
                                  LOPSliceInfo* info);

/*
 * Renders one slice with all settings of the loop at the present output rate. A slice rings on past
 * its cut: place it at its position, and let it overlap the next one.
 *
 * bufferFrames  frames that each array of `buffers` holds, at least the slice's fFrameCount; frames
 *               behind the slice are set to 0.0
 * buffers       not null. Stereo loop: two different arrays. Mono loop: fLeft, and fRight null
 *
 * Results: kLOPResult_NotInitialized; kLOPResult_InvalidHandle; kLOPResult_InvalidArgument, for
 *          buffers other than those; kLOPResult_InvalidSlice; kLOPResult_BufferTooSmall;
 *          kLOPResult_OutOfMemory; kLOPResult_Undefined; kLOPResult_OK. The arrays are written on
 *          success only.
 * Audio thread: no (it allocates). May run beside a preview of the same loop.
 */
LOP_API LOPResult LOPRenderSlice(LOPHandle handle, int32_t sliceIndex, int32_t bufferFrames,
                                 LOPRenderBuffers* buffers);

/*
 * Sets the output rate of slices and preview. Until then slices and preview come at the rate of the
 * stored audio, clamped to the range.
 *
 * rate  LOP_MIN_SAMPLE_RATE to LOP_MAX_SAMPLE_RATE frames per second
 *
 * Results: kLOPResult_NotInitialized; kLOPResult_InvalidHandle; kLOPResult_InvalidSampleRate;
 *          kLOPResult_PreviewRunning; kLOPResult_OutOfMemory, with both rates as they were;
 *          kLOPResult_Undefined; kLOPResult_OK.
 * Audio thread: no. May run while the audio thread still pulls the tail of a stopped preview, but
 * not beside itself, LOPGetSliceInfo or LOPRenderSlice on the same loop.
 */
LOP_API LOPResult LOPSetOutputSampleRate(LOPHandle handle, int32_t rate);

/* ---- Preview -------------------------------------------------------------------------------- */

/*
 * Starts the preview from the loop's start; it sounds from the next LOPRenderPreviewBatch on and
 * repeats the loop until it is stopped, at the file's tempo (within LOP_MIN_TEMPO to LOP_MAX_TEMPO)
 * until LOPSetPreviewTempo has set another. Where nothing sounds at the loop's start, since its
 * first slice is muted and dropped or a .lop begins later, the preview begins at once with the
 * first slice that sounds.
 *
 * The stop before it must have reached the audio: a preview that was pulled, and is then stopped
 * and started with no frame pulled between the two, counts as running but falls silent until it is
 * stopped and started once more. A loop of no slices runs and is silent. A preview whose audio
 * thread died inside a batch is silent until it is stopped and started.
 *
 * Results: kLOPResult_NotInitialized; kLOPResult_InvalidHandle; kLOPResult_PreviewRunning;
 *          kLOPResult_Undefined; kLOPResult_OK.
 * Audio thread: no. May run beside LOPRenderPreviewBatch.
 */
LOP_API LOPResult LOPStartPreview(LOPHandle handle);

/*
 * Stops the preview: its voices fade out over the following batches. The equalizer may ring on at
 * 1e-7 and below for long: a host that ends its pulling at silence must not wait for zeros.
 *
 * Results: kLOPResult_NotInitialized; kLOPResult_InvalidHandle; kLOPResult_PreviewNotRunning;
 *          kLOPResult_Undefined; kLOPResult_OK.
 * Audio thread: no. May run beside LOPRenderPreviewBatch.
 */
LOP_API LOPResult LOPStopPreview(LOPHandle handle);

/*
 * Sets the preview's tempo, also while it runs, with effect from the next block of 64 frames.
 * Slices move in time; they are not stretched. fStoredTempo of LOPGetInfo and LOPRenderSlice do not
 * change. The time to the next slice is kept in whole blocks, so that of many small changes between
 * two slices those below about 0.1 BPM are lost: glide in steps of a few a beat.
 *
 * tempo  LOP_MIN_TEMPO to LOP_MAX_TEMPO, thousandths of a beat per minute
 *
 * Results: kLOPResult_NotInitialized; kLOPResult_InvalidHandle; kLOPResult_InvalidTempo;
 *          kLOPResult_Undefined; kLOPResult_OK.
 * Audio thread: no. May run beside LOPRenderPreviewBatch.
 */
LOP_API LOPResult LOPSetPreviewTempo(LOPHandle handle, int32_t tempo);

/*
 * Renders the next `frameCount` frames of the preview. Batches of any sizes give the same samples.
 * A stopped preview gives its fading voices and then silence. A call that fails leaves the arrays
 * alone.
 *
 * frameCount  0 to LOP_MAX_BATCH_FRAMES
 * buffers     not null; fLeft not null, fRight another array, or null for a mono mix: the mean of
 *             both channels. A mono loop fills both arrays alike
 *
 * Results: kLOPResult_NotInitialized; kLOPResult_InvalidHandle; kLOPResult_InvalidArgument;
 *          kLOPResult_Undefined; kLOPResult_OK.
 * Audio thread: yes.
 */
LOP_API LOPResult LOPRenderPreviewBatch(LOPHandle handle, int32_t frameCount,
                                        LOPRenderBuffers* buffers);

#ifdef __cplusplus
}
#endif

#endif
