// The faster forms of the decoder's inner loop, and which of them this processor runs.
#pragma once

#include "LoopLibrary/Codec/TWIPChannelState.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace NSLOPDLL {

/// Where a decoder stands in a stream, and how far the words behind that place reach.
struct STWIPSpan {
    /// Words as they stand in the stream, most significant byte first.
    const uint32_t* fNextWord = nullptr;
    const uint32_t* fEndOfWords = nullptr;
    /// The next bit is bit 31; zeros follow the fBitsLeft bits that are left.
    uint32_t fCurrentWord = 0;
    int32_t fBitsLeft = 0;
};

/// Where samples go: the first channel's, and the second's, null in mono. A channel's samples lie
/// `fStride` apart.
template <class Sample>
struct TTWIPOutput {
    Sample* fFirst;
    Sample* fSecond;
    ptrdiff_t fStride;
};

/// A form decodes frames as long as it is sure that no word behind the span is needed, and answers
/// the number of samples: those of a frame count one by one, since it may stop between them. Span,
/// channels and output are then those of the decoder one sample at a time. It may stop early, and
/// before the first sample, for reasons of its own.
template <class Sample>
using TDecodeTWIP = int64_t (*)(STWIPSpan& span, TWIPChannelState* channels,
                                const TTWIPOutput<Sample>& output, int64_t frameCount) noexcept;

/// Forms differ in speed alone: on every stream, damaged ones too, they give the same.
struct STWIPForm {
    const char* fName;
    /// Null in the plain form, which decodes one sample after the other.
    TDecodeTWIP<int16_t> fDecode16;
    TDecodeTWIP<int32_t> fDecode32;
};

/// Words of a span below which a form is not worth calling: it would decode nothing.
constexpr ptrdiff_t kTWIPFormWords = 16;

/// The forms that this processor can run: the plain one first, the fastest last. At most three.
std::span<const STWIPForm> GetTWIPForms() noexcept;

/// The form in use: the fastest unless one was forced. Any thread.
const STWIPForm& GetTWIPForm() noexcept;

/// For tests and benchmarks, which link the insides: makes the form of this name the one in use, or
/// the fastest one again for an empty name. False, without effect, where there is no such form
/// here.
bool ForceTWIPForm(std::string_view name) noexcept;

} // namespace NSLOPDLL
