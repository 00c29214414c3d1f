#include "PorterPackage/Core/IFF/DumpIFFStructure.h"

#include "PorterPackage/Core/Bytes/ByteOrder.h"
#include "PorterPackage/Core/IFF/CIFFReader2.h"

#include <algorithm>
#include <array>
#include <cinttypes>
#include <cstdio>
#include <string>

namespace NSPorter {

namespace {

constexpr int kDeepestLevel = 64;
constexpr int32_t kWidestIndent = 200;
constexpr int32_t kIndentStep = 4;

std::string IDText(uint32_t id) {
    const std::array<uint8_t, 4> bytes = SplitBytes(id);
    return {bytes.begin(), bytes.end()};
}

void WriteLine(CMedia& output, const CIFFChunkHeader& header, int32_t indent) {
    const std::string blanks(static_cast<size_t>(std::clamp(indent, 0, kWidestIndent)), ' ');
    const std::string id = IDText(header.fID);
    const int64_t size = header.GetDataSize();
    std::array<char, 300> line{};
    int length = 0;
    if (header.fKind == kIFFKind_Chunk) {
        length =
            std::snprintf(line.data(), line.size(), "%sSimple chunk, type: %s, size: %" PRId64 "\n",
                          blanks.c_str(), id.c_str(), size);
    } else {
        const char* word = header.fKind == kIFFKind_Form  ? "FORM"
                           : header.fKind == kIFFKind_Cat ? "CAT "
                                                          : "LIST";
        length = std::snprintf(line.data(), line.size(),
                               "%sDumping contents of '%s' chunk (%s), size %" PRId64 "\n",
                               blanks.c_str(), word, id.c_str(), size);
    }
    output.Write(length, reinterpret_cast<const uint8_t*>(line.data()));
}

void DumpLevel(CMedia& media, CMedia& output, int32_t indent, int level) {
    CIFFReader2 reader(&media, kIFFMode_BigEndian);
    CIFFChunkHeader header;
    for (bool isThere = reader.ReadFirstHeader(header); isThere;
         isThere = reader.ReadNextHeader(header, header)) {
        WriteLine(output, header, indent);
        if (header.fKind != kIFFKind_Chunk && level < kDeepestLevel) {
            DumpLevel(*reader.MakeChildMedia(header), output, indent + kIndentStep, level + 1);
        }
    }
}

} // namespace

void DumpIFFStructure(CMedia& media, CMedia& output, int32_t indent) {
    // Held to what is ever written, so that the steps further in cannot overflow.
    DumpLevel(media, output, std::clamp(indent, 0, kWidestIndent), 0);
}

} // namespace NSPorter
