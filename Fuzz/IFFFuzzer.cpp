#include "Fuzz/Promise.h"

#include "Failure/Classes/XClasses.h"
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

} // namespace

// IFF and RIFF readers on any bytes.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t size) {
    ReadGarbage({bytes, bytes + size});
    return 0;
}
