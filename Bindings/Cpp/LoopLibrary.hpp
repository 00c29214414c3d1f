/*
 * LoopLibrary for C++17: the functions of LoopLibrary.h as objects that clean up after themselves.
 * Header-only; link the same library.
 *
 *     LoopLibrary::Library library;                          // initialises; ends with the scope
 *     LoopLibrary::Loop loop = LoopLibrary::Loop::Open(fileBytes);
 *     loop.SetPreviewTempo(LoopLibrary::Bpm(97.5));
 *     loop.StartPreview();
 *     LoopLibrary::Result result = loop.RenderPreview(left, right); // the audio thread
 *
 * Results.   Every call that can fail comes in two forms, as in std::filesystem. The plain form
 *            throws LoopLibrary::Error. The form with a last argument `Result& result` throws
 *            nothing of its own; it stores the result there and returns a default value on failure.
 *            RenderPreview has the second kind alone: it returns the result. Where a compiler is
 *            told to do without exceptions (-fno-exceptions), the plain form ends the program.
 *
 * Memory.    The render call allocates nothing. Arrays are given as Samples: anything with data()
 *            and size() over float (std::vector, std::array, std::span), a C array, or a pointer
 *            and a size. Bytes of files are given as Bytes in the same way.
 *
 * Threads.   As LoopLibrary.h says. A Loop is not more thread-safe than its handle.
 *
 * Misuse that fails to compile: copying a Loop or the Library; a tempo as a bare number
 * (thousandths or BPM?); a fractional output rate; constant arrays or arrays of another type to
 * render into; bytes of a container whose elements are not bytes; a result that nobody looks at; a
 * progress function with another parameter or result.
 */
#ifndef LOOPLIBRARY_HPP
#define LOOPLIBRARY_HPP

#include <LoopLibrary.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <limits>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#if defined(__cpp_exceptions) || defined(_CPPUNWIND)
#define LOOPLIBRARY_EXCEPTIONS 1
#else
#define LOOPLIBRARY_EXCEPTIONS 0
#endif

namespace LoopLibrary {

/// The results of LoopLibrary.h.
enum class [[nodiscard]] Result : LOPResult{OK = kLOPResult_OK,
                                            Aborted = kLOPResult_Aborted,
                                            NoCreatorInfo = kLOPResult_NoCreatorInfo,
                                            OutOfMemory = kLOPResult_OutOfMemory,
                                            FileCorrupt = kLOPResult_FileCorrupt,
                                            FileTooNew = kLOPResult_FileTooNew,
                                            ZeroLoopLength = kLOPResult_ZeroLoopLength,
                                            NotInitialized = kLOPResult_NotInitialized,
                                            AlreadyInitialized = kLOPResult_AlreadyInitialized,
                                            InvalidHandle = kLOPResult_InvalidHandle,
                                            InvalidSize = kLOPResult_InvalidSize,
                                            InvalidArgument = kLOPResult_InvalidArgument,
                                            InvalidSlice = kLOPResult_InvalidSlice,
                                            InvalidSampleRate = kLOPResult_InvalidSampleRate,
                                            BufferTooSmall = kLOPResult_BufferTooSmall,
                                            PreviewRunning = kLOPResult_PreviewRunning,
                                            PreviewNotRunning = kLOPResult_PreviewNotRunning,
                                            InvalidTempo = kLOPResult_InvalidTempo,
                                            Undefined = kLOPResult_Undefined};

/// An English sentence part for logs and messages, such as "the file is damaged". Never null.
inline const char* GetMessage(Result result) noexcept {
    switch (result) {
    case Result::OK:
        return "success";
    case Result::Aborted:
        return "the load was stopped by its progress function";
    case Result::NoCreatorInfo:
        return "the loop holds no creator texts";
    case Result::OutOfMemory:
        return "memory ran out";
    case Result::FileCorrupt:
        return "not a loop file, or a damaged one";
    case Result::FileTooNew:
        return "written by a newer version of the format";
    case Result::ZeroLoopLength:
        return "the loop's musical length is zero";
    case Result::NotInitialized:
        return "the library is not initialised";
    case Result::AlreadyInitialized:
        return "the library is initialised already";
    case Result::InvalidHandle:
        return "the handle names no open loop";
    case Result::InvalidSize:
        return "a record's size is too small";
    case Result::InvalidArgument:
        return "a required pointer or count is wrong";
    case Result::InvalidSlice:
        return "the slice index is out of range";
    case Result::InvalidSampleRate:
        return "the output rate is out of range";
    case Result::BufferTooSmall:
        return "the buffer holds fewer frames than the slice";
    case Result::PreviewRunning:
        return "the operation needs a stopped preview";
    case Result::PreviewNotRunning:
        return "the operation needs a running preview";
    case Result::InvalidTempo:
        return "the preview tempo is out of range";
    case Result::Undefined:
        break;
    }
    return "an unexpected failure";
}

/// What the throwing forms throw. what() is GetMessage.
class Error : public std::runtime_error {
public:
    explicit Error(Result result) : std::runtime_error(GetMessage(result)), fResult(result) {}
    Result GetResult() const noexcept { return fResult; }

private:
    Result fResult;
};

/// Beats per minute, where a beat is one unit of the time signature. Explicit, since the C
/// functions count in thousandths.
class Bpm {
public:
    explicit constexpr Bpm(double beatsPerMinute) noexcept : fValue(beatsPerMinute) {}
    static constexpr Bpm FromThousandths(int32_t thousandths) noexcept {
        return Bpm(static_cast<double>(thousandths) / 1000.0);
    }
    constexpr double GetValue() const noexcept { return fValue; }
    /// Rounded; what no 32-bit number can hold becomes 0, which no call accepts as a tempo.
    int32_t GetThousandths() const noexcept {
        const double thousandths = std::round(fValue * 1000.0);
        return thousandths >= 0.0 && thousandths <= 2147483647.0 ? static_cast<int32_t>(thousandths)
                                                                 : 0;
    }

private:
    double fValue;
};

namespace Detail {

[[noreturn]] inline void Fail(Result result) {
#if LOOPLIBRARY_EXCEPTIONS
    throw Error(result);
#else
    static_cast<void>(result);
    std::terminate();
#endif
}

/// The element type of something with data() and size(), else void.
template <class Container, class = void>
struct ElementOf {
    using Type = void;
};
template <class Container>
struct ElementOf<Container, std::void_t<decltype(std::declval<Container&>().data()),
                                        decltype(std::declval<Container&>().size())>> {
    using Type = std::remove_pointer_t<decltype(std::declval<Container&>().data())>;
};
template <class Container>
using Element = typename ElementOf<Container>::Type;

template <class T>
constexpr bool kIsByte =
    std::is_same_v<std::remove_cv_t<T>, std::byte> || std::is_same_v<std::remove_cv_t<T>, char> ||
    std::is_same_v<std::remove_cv_t<T>, unsigned char> ||
    std::is_same_v<std::remove_cv_t<T>, signed char>;

/// Takes an int and answers nothing or a bool; a pointer or number that converts is a mistake.
template <class Function, class = void>
struct IsProgress : std::false_type {};
template <class Function>
struct IsProgress<Function, std::void_t<std::invoke_result_t<Function&, int>>>
    : std::bool_constant<std::is_void_v<std::invoke_result_t<Function&, int>> ||
                         std::is_same_v<std::invoke_result_t<Function&, int>, bool>> {};

} // namespace Detail

/// Borrowed bytes of a loop file: read during the call, never written, not kept.
class Bytes {
public:
    Bytes(const void* data, std::size_t size) noexcept : fData(data), fSize(size) {}
    template <class Container,
              std::enable_if_t<Detail::kIsByte<Detail::Element<const Container>>, int> = 0>
    Bytes(const Container& container) noexcept : fData(container.data()), fSize(container.size()) {}

    const void* GetData() const noexcept { return fData; }
    std::size_t GetSize() const noexcept { return fSize; }

private:
    const void* fData;
    std::size_t fSize;
};

/// A borrowed array of 32-bit float samples to render one channel into.
class Samples {
public:
    /// No array: the channel is not wanted.
    constexpr Samples(std::nullptr_t = nullptr) noexcept {}
    constexpr Samples(float* data, std::size_t frames) noexcept : fData(data), fFrames(frames) {}
    template <std::size_t kFrames>
    constexpr Samples(float (&array)[kFrames]) noexcept : fData(array), fFrames(kFrames) {}
    template <class Container,
              std::enable_if_t<std::is_same_v<Detail::Element<Container>, float>, int> = 0>
    Samples(Container&& container) noexcept : fData(container.data()), fFrames(container.size()) {
        static_assert(std::is_lvalue_reference_v<Container&&> ||
                          std::is_trivially_copyable_v<std::remove_reference_t<Container>>,
                      "a temporary container would be gone before its samples are read");
    }

    constexpr float* GetData() const noexcept { return fData; }
    constexpr std::size_t GetFrames() const noexcept { return fFrames; }

private:
    float* fData = nullptr;
    std::size_t fFrames = 0;
};

/// Keeps the library initialised as long as it lives. One at a time; all Loops must be gone before
/// it. Not for the audio thread.
class Library {
public:
    /// Throws Error: AlreadyInitialized, OutOfMemory, Undefined.
    Library() : Library(Initialize()) {}
    /// Never throws; look at `result`.
    explicit Library(Result& result) noexcept {
        result = Result{LOPInitializeDLL()};
        fOwns = result == Result::OK;
    }
    Library(Library&& other) noexcept : fOwns(std::exchange(other.fOwns, false)) {}
    Library& operator=(Library&& other) noexcept {
        std::swap(fOwns, other.fOwns);
        return *this;
    }
    ~Library() {
        if (fOwns) {
            LOPUninitializeDLL();
        }
    }

private:
    struct Owns {};
    explicit Library(Owns) noexcept : fOwns(true) {}
    static Owns Initialize() {
        const Result result{LOPInitializeDLL()};
        if (result != Result::OK) {
            Detail::Fail(result);
        }
        return {};
    }

    bool fOwns = false;
};

/// A rendered slice; fRight is empty for a mono loop.
struct Audio {
    std::vector<float> fLeft;
    std::vector<float> fRight;
};

/// An open loop. Closes itself, a running preview included. Movable, not copyable; a moved-from or
/// default Loop names no loop, and its calls give Result::InvalidHandle.
class Loop {
public:
    Loop() noexcept = default;
    Loop(Loop&& other) noexcept : fHandle(std::exchange(other.fHandle, 0)) {}
    Loop& operator=(Loop&& other) noexcept {
        Loop taken(std::move(other)); // closes this one's loop at the end
        std::swap(fHandle, taken.fHandle);
        return *this;
    }
    ~Loop() { Close(); }

    /// Opens the loop file whose bytes are given and decodes its audio. `progress` is any callable
    /// that takes the percentage, 0 to 100, as int; if it returns bool, false stops the load
    /// (Result::Aborted). What it throws stops the load and leaves Open. It runs on this thread
    /// with the library locked: it must not wait for another thread that uses the library.
    static Loop Open(Bytes bytes) {
        Result result{};
        return Checked(Open(bytes, result), result);
    }
    static Loop Open(Bytes bytes, Result& result) noexcept {
        return Create(bytes, nullptr, nullptr, result);
    }
    template <class Function, std::enable_if_t<Detail::IsProgress<Function>::value, int> = 0>
    static Loop Open(Bytes bytes, Function&& progress) {
        Result result{};
        return Checked(Open(bytes, progress, result), result);
    }
    /// Throws what `progress` throws and nothing else.
    template <class Function, std::enable_if_t<Detail::IsProgress<Function>::value, int> = 0>
    static Loop Open(Bytes bytes, Function&& progress, Result& result) {
        Progress<std::remove_reference_t<Function>> state{progress, nullptr};
        Loop loop = Create(bytes, &decltype(state)::Report, &state, result);
#if LOOPLIBRARY_EXCEPTIONS
        if (state.fThrown != nullptr) {
            std::rethrow_exception(state.fThrown);
        }
#endif
        return loop;
    }

    /// Whether it names an open loop.
    explicit operator bool() const noexcept {
        return fHandle != 0;
    }
    /// For calls of LoopLibrary.h; remains owned by the Loop.
    LOPHandle GetHandle() const noexcept {
        return fHandle;
    }
    /// Stops the preview and closes the loop. No other thread may use the loop any more.
    void Close() noexcept {
        if (fHandle != 0) {
            static_cast<void>(LOPStopPreview(fHandle)); // a running preview would keep it open
            LOPDelete(&fHandle);
            fHandle = 0;
        }
    }

    /// Tempo, length, rate, slices; see LOPInfo.
    LOPInfo GetInfo() const {
        Result result{};
        return Checked(GetInfo(result), result);
    }
    LOPInfo GetInfo(Result& result) const noexcept {
        LOPInfo info{};
        result = Result{LOPGetInfo(fHandle, kSizeOf<LOPInfo>, &info)};
        return info;
    }

    /// What the bytes of a loop file say, without decoding them; see LOPGetInfoFromBuffer.
    static LOPInfo ReadInfo(Bytes bytes) {
        Result result{};
        return Checked(ReadInfo(bytes, result), result);
    }
    static LOPInfo ReadInfo(Bytes bytes, Result& result) noexcept {
        LOPInfo info{};
        result = bytes.GetSize() > kMostBytes
                     ? Result::InvalidArgument
                     : Result{LOPGetInfoFromBuffer(static_cast<int32_t>(bytes.GetSize()),
                                                   bytes.GetData(), kSizeOf<LOPInfo>, &info)};
        return info;
    }

    /// Five UTF-8 texts in the file's order; nothing when the loop holds none.
    std::optional<std::array<std::string, 5>> GetCreatorTexts() const {
        LOPCreatorInfo info{};
        const Result result{LOPGetCreatorInfo(fHandle, kSizeOf<LOPCreatorInfo>, &info)};
        if (result == Result::NoCreatorInfo) {
            return std::nullopt;
        }
        return Checked(std::array<std::string, 5>{info.fText1, info.fText2, info.fText3,
                                                  info.fText4, info.fText5},
                       result);
    }

    /// Place in pulses (LOP_PPQ to a quarter note) and length in frames at the present output rate.
    /// `slice` is 0 to fSliceCount - 1 of GetInfo.
    LOPSliceInfo GetSliceInfo(int32_t slice) const {
        Result result{};
        return Checked(GetSliceInfo(slice, result), result);
    }
    LOPSliceInfo GetSliceInfo(int32_t slice, Result& result) const noexcept {
        LOPSliceInfo info{};
        result = Result{LOPGetSliceInfo(fHandle, slice, kSizeOf<LOPSliceInfo>, &info)};
        return info;
    }

    /// Renders a slice into new arrays of its length.
    Audio RenderSlice(int32_t slice) const {
        const auto frames = static_cast<std::size_t>(GetSliceInfo(slice).fFrameCount);
        Audio audio{std::vector<float>(frames),
                    std::vector<float>(GetInfo().fChannels == 2 ? frames : 0)};
        RenderSlice(slice, audio.fLeft, audio.fRight.empty() ? Samples() : Samples(audio.fRight));
        return audio;
    }
    /// Renders a slice into arrays of at least its length; frames behind it become 0.0. Stereo: two
    /// arrays; mono: `right` is left out.
    void RenderSlice(int32_t slice, Samples left, Samples right = nullptr) const {
        Result result{};
        RenderSlice(slice, left, right, result);
        Check(result);
    }
    void RenderSlice(int32_t slice, Samples left, Samples right, Result& result) const noexcept {
        LOPRenderBuffers buffers{left.GetData(), right.GetData()};
        result = Result{LOPRenderSlice(fHandle, slice, FramesOf(left, right), &buffers)};
    }

    /// Sets the output rate of slices and preview, LOP_MIN_SAMPLE_RATE to LOP_MAX_SAMPLE_RATE
    /// frames per second. The preview must be stopped.
    void SetOutputSampleRate(int32_t rate) {
        Check(Result{LOPSetOutputSampleRate(fHandle, rate)});
    }
    void SetOutputSampleRate(int32_t rate, Result& result) noexcept {
        result = Result{LOPSetOutputSampleRate(fHandle, rate)};
    }
    template <class Number, std::enable_if_t<std::is_floating_point_v<Number>, int> = 0>
    void SetOutputSampleRate(Number rate) = delete;

    /// Start, stop and tempo of the preview, from a control thread; see LoopLibrary.h.
    void StartPreview() {
        Check(Result{LOPStartPreview(fHandle)});
    }
    void StartPreview(Result& result) noexcept {
        result = Result{LOPStartPreview(fHandle)};
    }
    void StopPreview() {
        Check(Result{LOPStopPreview(fHandle)});
    }
    void StopPreview(Result& result) noexcept {
        result = Result{LOPStopPreview(fHandle)};
    }
    void SetPreviewTempo(Bpm tempo) {
        Check(Result{LOPSetPreviewTempo(fHandle, tempo.GetThousandths())});
    }
    void SetPreviewTempo(Bpm tempo, Result& result) noexcept {
        result = Result{LOPSetPreviewTempo(fHandle, tempo.GetThousandths())};
    }

    /// For the audio thread: renders the next frames of the preview, as many as the shorter array
    /// holds; more than LOP_MAX_BATCH_FRAMES are Result::InvalidArgument. Without `right`, a mono
    /// mix. Allocates nothing and never throws.
    Result RenderPreview(Samples left, Samples right = nullptr) noexcept {
        LOPRenderBuffers buffers{left.GetData(), right.GetData()};
        return Result{LOPRenderPreviewBatch(fHandle, FramesOf(left, right), &buffers)};
    }

private:
    static constexpr std::size_t kMostBytes = 0x7FFFFFFF;
    template <class Record>
    static constexpr int32_t kSizeOf = static_cast<int32_t>(sizeof(Record));

    template <class Function>
    struct Progress {
        Function& fFunction;
        std::exception_ptr fThrown;

        /// 1 stops the load. No exception may leave it, since the library is locked.
        static int32_t Report(int32_t percent, void* self) noexcept {
            auto& state = *static_cast<Progress*>(self);
#if LOOPLIBRARY_EXCEPTIONS
            if (state.fThrown != nullptr) {
                return 1;
            }
            try {
                return state.Call(percent);
            } catch (...) {
                state.fThrown = std::current_exception();
                return 1;
            }
#else
            return state.Call(percent);
#endif
        }
        int32_t Call(int32_t percent) {
            if constexpr (std::is_void_v<std::invoke_result_t<Function&, int>>) {
                fFunction(percent);
                return 0;
            } else {
                return fFunction(percent) ? 0 : 1;
            }
        }
    };

    static Loop Create(Bytes bytes, LOPCreateCallback callback, void* userData,
                       Result& result) noexcept {
        Loop loop;
        result = bytes.GetSize() > kMostBytes
                     ? Result::InvalidArgument
                     : Result{LOPCreate(&loop.fHandle, bytes.GetData(),
                                        static_cast<int32_t>(bytes.GetSize()), callback, userData)};
        return loop;
    }
    static int32_t FramesOf(Samples left, Samples right) noexcept {
        std::size_t frames = left.GetFrames();
        if (right.GetData() != nullptr && right.GetFrames() < frames) {
            frames = right.GetFrames();
        }
        return static_cast<int32_t>(frames < kMostBytes ? frames : kMostBytes);
    }
    static void Check(Result result) {
        if (result != Result::OK) {
            Detail::Fail(result);
        }
    }
    /// By reference, since the call that gives `value` also sets `result`.
    template <class Value>
    static Value Checked(Value&& value, const Result& result) {
        Check(result);
        return std::forward<Value>(value);
    }

    LOPHandle fHandle = 0;
};

} // namespace LoopLibrary

#endif
