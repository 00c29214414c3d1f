#include "Fuzz/CByteSource.h"
#include "Fuzz/Promise.h"

#include "Failure/Classes/XClasses.h"
#include "LoopWriter/IFFChunkTree.h"
#include "PorterPackage/Core/Bytes/FourCharID.h"
#include "PorterPackage/Core/IFF/CIFFFileReader.h"
#include "PorterPackage/Core/IFF/CIFFReader.h"
#include "PorterPackage/Core/IFF/CRIFFReader2.h"
#include "PorterPackage/Core/IFF/DumpIFFStructure.h"
#include "PorterPackage/Core/Media/CMemoryMedia.h"
#include "PorterPackage/Core/Media/COwnedMemoryMedia.h"

#include <memory>

namespace {

using namespace NSPorter;
using NSLoopWriter::SIFFChunk;

template <class Body>
void Forgive(Body body) {
    try {
        body();
    } catch (const NSLichen::XFormatViolation&) {
    } catch (const NSLichen::XRead&) {
    }
}

template <class Reader>
void Walk(Reader& reader, int depth) {
    CIFFChunkHeader header;
    int64_t last = -1;
    for (bool more = reader.ReadFirstHeader(header); more;
         more = reader.ReadNextHeader(header, header)) {
        PROMISE(header.fOffset > last);
        last = header.fOffset;
        if (header.fKind != 0 && depth < 40) {
            Forgive([&] {
                Reader child(&reader, header);
                Walk(child, depth + 1);
            });
        }
    }
}

void ReadGarbage(const std::vector<uint8_t>& bytes) {
    CMemoryMedia media(static_cast<int64_t>(bytes.size()), bytes.data());
    Forgive([&] {
        CIFFReader2 reader(&media, 0);
        Walk(reader, 0);
    });
    Forgive([&] {
        CRIFFReader2 reader(&media);
        Walk(reader, 0);
    });
    Forgive([&] {
        CIFFFileReader reader(&media, 0);
        reader.CountChunks();
        for (bool more = reader.EnterFirstChild(); more;) {
            more = reader.EnterNextSibling();
        }
    });
    Forgive([&] {
        COwnedMemoryMedia dump;
        DumpIFFStructure(media, dump, 0);
    });
    for (const uint32_t id : {FourCharID("COMM"), FourCharID("ABCD")}) {
        Forgive([&] {
            CIFFReader reader(&media, FourCharID("FORM"));
            uint32_t size = 0;
            reader.FindChunk(id, size);
        });
    }
}

SIFFChunk MakeTree(CByteSource& source, int depth) {
    static const uint32_t ids[] = {FourCharID("ABCD"), FourCharID("COMM"), FourCharID("A   "),
                                   FourCharID("zzz~")};
    const uint32_t id = ids[source.Byte() % 4];
    if (depth > 0 && (depth > 6 || source.Byte() % 3 != 0)) {
        return NSLoopWriter::MakeSimpleChunk(id, source.Take(source.Byte() % 40));
    }
    std::vector<SIFFChunk> children;
    for (int count = source.Byte() % 5; count > 0; --count) {
        children.push_back(MakeTree(source, depth + 1));
    }
    const SIFFChunk::EKind kinds[] = {SIFFChunk::EKind::kCat, SIFFChunk::EKind::kForm,
                                      SIFFChunk::EKind::kList};
    return NSLoopWriter::MakeGroup(kinds[source.Byte() % 3], id, std::move(children));
}

void CheckTree(CIFFReader2& reader, const std::vector<SIFFChunk>& chunks) {
    CIFFChunkHeader header;
    bool more = reader.ReadFirstHeader(header);
    for (const SIFFChunk& chunk : chunks) {
        PROMISE(more && header.fID == chunk.fID);
        const std::unique_ptr<CMedia> data = reader.MakeChildMedia(header);
        if (chunk.fKind == SIFFChunk::EKind::kSimple) {
            std::vector<uint8_t> body(static_cast<size_t>(data->GetLength()));
            data->Read(data->GetLength(), body.data());
            PROMISE(body == chunk.fBody);
        } else {
            CIFFReader2 child(&reader, header);
            CheckTree(child, chunk.fChildren);
        }
        more = reader.ReadNextHeader(header, header);
    }
    PROMISE(!more);
}

void RoundTrip(CByteSource& source) {
    const SIFFChunk root = MakeTree(source, 0);
    const std::vector<uint8_t> bytes = NSLoopWriter::WriteNestedTree(root);
    CMemoryMedia media(static_cast<int64_t>(bytes.size()), bytes.data());
    PROMISE(IsIFFMedia(media, 0));
    CIFFReader2 reader(&media, 0);
    CheckTree(reader, {root});
}

} // namespace

// IFF and RIFF readers on any bytes, and trees that the writers write and the readers read back.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t size) {
    CByteSource source(bytes, size);
    if ((source.Byte() & 1) != 0) {
        RoundTrip(source);
    } else {
        ReadGarbage(source.Rest());
    }
    return 0;
}
