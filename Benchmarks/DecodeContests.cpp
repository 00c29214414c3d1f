// The decoder alone in each form, and loading whole files, beside other lossless codecs.

#include "Benchmarks/Contest/Audio.h"
#include "Benchmarks/Contest/Contests.h"
#include "Benchmarks/Peers/DecoderPeers.h"
#include "LoopLibrary/Codec/COptimizedTWIPDecompressorFromMedia.h"
#include "LoopWriter/CTWIPCompressor.h"
#include "LoopWriter/LOP2File.h"
#include "PorterPackage/Core/Media/CMemoryMedia.h"

#include <algorithm>
#include <cstdio>
#include <stdexcept>

namespace LoopBench {

namespace {

template <class Sample>
void DecodeInto(const Bytes& stream, const SClip& shape, std::vector<Sample>& left,
                std::vector<Sample>& right) {
    left.resize(std::max(left.size(), shape.fLeft.size()));
    right.resize(std::max(right.size(), shape.fRight.size()));
    NSPorter::CMemoryMedia media(static_cast<int64_t>(stream.size()), stream.data());
    NSLOPDLL::COptimizedTWIPDecompressorFromMedia(&media).DecompressPlanes(
        shape.GetFrameCount(), left.data(), shape.IsStereo() ? right.data() : nullptr);
}

// The own decoder, in one form, as a peer.
SDecoderPeer OwnDecoder(const NSLOPDLL::STWIPForm& form) {
    const auto encode = [](const SClip& clip) {
        return NSLoopWriter::CompressTWIP(clip.fLeft, clip.fRight);
    };
    const auto decode = [&form](const Bytes& bytes, const SClip& shape, SClip* store) {
        static std::vector<int16_t> narrow[2];
        static std::vector<int32_t> wide[2];
        NSLOPDLL::ForceTWIPForm(form.fName);
        if (shape.fBitDepth == 16) {
            DecodeInto(bytes, shape, narrow[0], narrow[1]);
        } else {
            DecodeInto(bytes, shape, wide[0], wide[1]);
        }
        if (store != nullptr) {
            const auto keep = [&](const auto& planes) {
                store->fLeft.assign(planes[0].begin(), planes[0].begin() + shape.GetFrameCount());
                store->fRight.assign(planes[1].begin(),
                                     planes[1].begin() +
                                         static_cast<std::ptrdiff_t>(shape.fRight.size()));
            };
            if (shape.fBitDepth == 16) {
                keep(narrow);
            } else {
                keep(wide);
            }
        }
    };
    return {std::string("own decoder, ") + form.fName, encode, decode};
}

void CheckOutput(const SDecoderPeer& peer, const Bytes& bytes, const SClip& clip) {
    SClip decoded{clip.fName, clip.fBitDepth, clip.fSampleRate, {}, {}};
    peer.fDecode(bytes, clip, &decoded);
    if (decoded != clip) {
        throw std::runtime_error(peer.fName + " does not give back " + clip.fName);
    }
}

void AddPeer(CContest& contest, const SDecoderPeer& peer, const SClipSet& set, double& bits) {
    std::vector<Bytes> encoded;
    for (const SClip& clip : set.fClips) {
        encoded.push_back(peer.fEncode(clip));
        CheckOutput(peer, encoded.back(), clip);
        bits += static_cast<double>(encoded.back().size()) * 8;
    }
    contest.Add(peer.fName, [peer, encoded, &set] {
        for (size_t i = 0; i < encoded.size(); ++i) {
            peer.fDecode(encoded[i], set.fClips[i], nullptr);
        }
    });
}

Bytes WriteLoop(const SClip& clip) {
    NSLoopWriter::SLOP2File file;
    file.fLeft = clip.fLeft;
    file.fRight = clip.fRight;
    file.fBitDepth = clip.fBitDepth;
    file.fSampleInfo.fSampleRate = static_cast<uint32_t>(clip.fSampleRate);
    return NSLoopWriter::WriteLOP2(file);
}

} // namespace

void HoldDecodeContests(SSession& session) {
    std::vector<SDecoderPeer> peers = {FlacPeer(5)};
    for (const NSLOPDLL::STWIPForm& form : NSLOPDLL::GetTWIPForms()) {
        peers.push_back(OwnDecoder(form));
    }
    for (const int level : {0, 8}) {
        peers.push_back(FlacPeer(level));
    }
    for (const char* options : {"-f", "", "-h"}) {
        peers.push_back(WavPackPeer(options));
    }
    for (const char* codec : {"tta", "alac"}) {
        peers.push_back(AvcodecPeer(codec));
    }
    for (const SClipSet& set : MakeClipSets(session.fQuick)) {
        CContest contest("decode " + set.fName, "sample", set.CountSamples());
        std::printf("bits a sample:");
        for (const SDecoderPeer& peer : peers) {
            double bits = 0;
            AddPeer(contest, peer, set, bits);
            std::printf(" %s %.2f;", peer.fName.c_str(), bits / set.CountSamples());
        }
        std::printf("\n");
        std::vector<Bytes> files;
        for (const SClip& clip : set.fClips) {
            files.push_back(WriteLoop(clip));
        }
        for (const auto& library : session.fLibraries) {
            contest.Add("LOPCreate, " + library->GetName(), [&files, &library] {
                for (const Bytes& file : files) {
                    LOPHandle loop = library->Load(file);
                    library->fDelete(&loop);
                }
            });
        }
        session.Hold(contest);
    }
    NSLOPDLL::ForceTWIPForm("");
}

} // namespace LoopBench
