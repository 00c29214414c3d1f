// Other lossless codecs, from memory to memory.
#pragma once

#include "Benchmarks/Contest/Audio.h"

#include <functional>
#include <string>
#include <vector>

namespace LoopBench {

using Bytes = std::vector<uint8_t>;

/// What a decoder gives out: integers, as one plane a channel, in the scale of the clip's depth.
/// `store` is null while time is taken: the decoder's own output counts, no copy of it.
struct SDecoderPeer {
    std::string fName;
    std::function<Bytes(const SClip& clip)> fEncode;
    std::function<void(const Bytes& bytes, const SClip& shape, SClip* store)> fDecode;
};

SDecoderPeer FlacPeer(int level);
/// `options` of the encoder's command line: "-f", "" or "-h".
SDecoderPeer WavPackPeer(const std::string& options);
/// "tta" or "alac".
SDecoderPeer AvcodecPeer(const std::string& codec);

} // namespace LoopBench
