// The resources that the build puts into a module on systems whose modules have none of their own.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace NSSupport {

struct SEmbeddedResource {
    const char* fKind;
    const char* fName; // lower case
    const uint8_t* fData;
    size_t fSize;
};

/// Defined in a source that the build generates from Resources/.
std::span<const SEmbeddedResource> GetEmbeddedResources();

} // namespace NSSupport
