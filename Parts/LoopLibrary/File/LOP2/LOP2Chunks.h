#pragma once

#include "PorterPackage/Core/Bytes/FourCharID.h"
#include "PorterPackage/Core/IFF/CIFFFileReader.h"

#include <cstdint>

namespace NSLOPDLL {

/// Ids of a LOP2 file.
constexpr uint32_t kLOP2FileCatIFFType = NSPorter::FourCharID("LOP2");
constexpr uint32_t kLOP2HeadChunkID = NSPorter::FourCharID("HEAD");
constexpr uint32_t kLOP2CreatorInfoChunkID = NSPorter::FourCharID("CREI");
constexpr uint32_t kLOP2GeneralInfoChunkID = NSPorter::FourCharID("GLOB");
constexpr uint32_t kLOP2TesselInfoChunkID = NSPorter::FourCharID("TESL");
constexpr uint32_t kLOP2TesselExtraInfoChunkID = NSPorter::FourCharID("TSLX");
constexpr uint32_t kLOP2DeviceCatIFFType = NSPorter::FourCharID("DEVL");
constexpr uint32_t kLOP2TransientShaperChunkID = NSPorter::FourCharID("TRSH");
constexpr uint32_t kLOP2EqualizerChunkID = NSPorter::FourCharID("EQ  ");
constexpr uint32_t kLOP2CompressorChunkID = NSPorter::FourCharID("COMP");
constexpr uint32_t kLOP2SliceCatIFFType = NSPorter::FourCharID("SLCL");
constexpr uint32_t kLOP2SliceChunkID = NSPorter::FourCharID("SLCE");
constexpr uint32_t kLOP2SampleInfoChunkID = NSPorter::FourCharID("SINF");
constexpr uint32_t kLOP2SampleDataChunkID = NSPorter::FourCharID("SDAT");

/// Enters a chunk of the current level, constructs its class on it and leaves it again.
template <class Chunk>
Chunk ReadLOP2Chunk(NSPorter::CIFFFileReader& reader, uint32_t id) {
    reader.EnterChunk(id);
    Chunk chunk(*reader.GetMedia());
    reader.Leave();
    return chunk;
}

} // namespace NSLOPDLL
