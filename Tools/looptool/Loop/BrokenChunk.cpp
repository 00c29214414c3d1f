#include "looptool/Loop/BrokenChunk.h"

#include "LoopLibrary/File/Common/CTesselFile.h"
#include "LoopLibrary/File/Common/FileKind.h"
#include "LoopLibrary/File/LOP2/Chunks/CLOP2CompressorDeviceChunk.h"
#include "LoopLibrary/File/LOP2/Chunks/CLOP2CreatorInfoChunk.h"
#include "LoopLibrary/File/LOP2/Chunks/CLOP2EqualizerDeviceChunk.h"
#include "LoopLibrary/File/LOP2/Chunks/CLOP2GeneralInfoChunk.h"
#include "LoopLibrary/File/LOP2/Chunks/CLOP2HeadChunk.h"
#include "LoopLibrary/File/LOP2/Chunks/CLOP2SampleInfoChunk.h"
#include "LoopLibrary/File/LOP2/Chunks/CLOP2SliceChunk.h"
#include "LoopLibrary/File/LOP2/Chunks/CLOP2TesselExtraInfoChunk.h"
#include "LoopLibrary/File/LOP2/Chunks/CLOP2TesselInfoChunk.h"
#include "LoopLibrary/File/LOP2/Chunks/CLOP2TransientShaperDeviceChunk.h"
#include "LoopLibrary/File/LOP2/LOP2Chunks.h"
#include "PorterPackage/Core/Media/CMemoryMedia.h"

#include <exception>
#include <map>
#include <string_view>

namespace NSLoopTool {

namespace {

using NSPorter::CMemoryMedia;
using ReadFunction = void (*)(NSPorter::CMedia&);

template <class Chunk>
void Read(NSPorter::CMedia& media) {
    const Chunk chunk(media);
}

void ReadNothing(NSPorter::CMedia& /*media*/) {}

const std::map<std::string_view, ReadFunction> kReaders = {
    {"HEAD", Read<NSLOPDLL::CLOP2HeadChunk>},
    {"CREI", Read<NSLOPDLL::CLOP2CreatorInfoChunk>},
    {"GLOB", Read<NSLOPDLL::CLOP2GeneralInfoChunk>},
    {"TESL", Read<NSLOPDLL::CLOP2TesselInfoChunk>},
    {"TSLX", Read<NSLOPDLL::CLOP2TesselExtraInfoChunk>},
    {"TRSH", Read<NSLOPDLL::CLOP2TransientShaperDeviceChunk>},
    {"EQ  ", Read<NSLOPDLL::CLOP2EqualizerDeviceChunk>},
    {"COMP", Read<NSLOPDLL::CLOP2CompressorDeviceChunk>},
    {"SLCE", Read<NSLOPDLL::CLOP2SliceChunk>},
    {"SINF", Read<NSLOPDLL::CLOP2SampleInfoChunk>},
    {"SDAT", ReadNothing},
};

struct SPlace {
    size_t fStart;
    size_t fEnd;
};

// Walks the chunks of a group, "CAT " groups inside it too, and notes which were seen.
class CChunkWalk {
public:
    explicit CChunkWalk(const std::vector<uint8_t>& bytes) : fBytes(bytes) {}

    // What is wrong in the place, or nothing.
    std::string Walk(SPlace place) {
        constexpr size_t kHeadBytes = 8;
        while (place.fEnd - place.fStart >= kHeadBytes) {
            const std::string id = IDAt(place.fStart);
            const size_t size = SizeAt(place.fStart + 4);
            const size_t start = place.fStart + kHeadBytes;
            if (size > place.fEnd - start) {
                return Name(id) + " reaches " + std::to_string(size - (place.fEnd - start)) +
                       " bytes beyond the " + (place.fEnd == fBytes.size() ? "file" : "group");
            }
            std::string fault = Inspect(id, {start, start + size});
            if (!fault.empty()) {
                return fault;
            }
            fSeen[id] = true;
            place.fStart = std::min(start + size + (size & 1), place.fEnd);
        }
        return "";
    }

    std::string FirstMissing(std::initializer_list<const char*> ids) const {
        for (const char* id : ids) {
            if (!fSeen.contains(id)) {
                return Name(id) + " is missing";
            }
        }
        return "";
    }

    size_t SizeAt(size_t at) const {
        return size_t{fBytes[at]} << 24 | size_t{fBytes[at + 1]} << 16 |
               size_t{fBytes[at + 2]} << 8 | size_t{fBytes[at + 3]};
    }

private:
    std::string IDAt(size_t at) const {
        return {fBytes.begin() + static_cast<std::ptrdiff_t>(at),
                fBytes.begin() + static_cast<std::ptrdiff_t>(at) + 4};
    }
    static std::string Name(const std::string& id) { return "chunk \"" + id + "\""; }

    std::string Inspect(const std::string& id, SPlace body) {
        if (id == "CAT ") {
            if (body.fEnd - body.fStart < 4) {
                return "a group without a type";
            }
            const std::string type = IDAt(body.fStart);
            fSeen[type] = true;
            return Walk({body.fStart + 4, body.fEnd});
        }
        const auto reader = kReaders.find(id);
        if (reader == kReaders.end()) {
            return "";
        }
        CMemoryMedia media(static_cast<int64_t>(body.fEnd - body.fStart),
                           fBytes.data() + body.fStart);
        try {
            reader->second(media);
            return "";
        } catch (const std::exception&) {
            return Name(id);
        }
    }

    const std::vector<uint8_t>& fBytes;
    std::map<std::string, bool> fSeen;
};

} // namespace

std::string BrokenChunk(const std::vector<uint8_t>& bytes) {
    CMemoryMedia media(static_cast<int64_t>(bytes.size()), bytes.data());
    const int32_t kind = NSLOPDLL::CTesselFile::DetectFileKind(media);
    constexpr size_t kGroupHeadBytes = 12;
    if (kind == NSLOPDLL::kFileKind_None || bytes.size() < kGroupHeadBytes) {
        return "";
    }
    CChunkWalk walk(bytes);
    const size_t end = std::min(bytes.size(), 8 + walk.SizeAt(4));
    std::string fault = walk.Walk({kGroupHeadBytes, end});
    if (!fault.empty()) {
        return fault;
    }
    return kind == NSLOPDLL::kFileKind_LOP2
               ? walk.FirstMissing({"HEAD", "GLOB", "TESL", "DEVL", "TRSH", "EQ  ", "COMP", "SLCL",
                                    "SINF", "SDAT"})
               : walk.FirstMissing({"COMM", "APPL", "SSND"});
}

} // namespace NSLoopTool
