#include "Support/Modules/ModuleResources.h"

#include "PorterPackage/Core/Media/CMemoryMedia.h"
#include "Support/Modules/EmbeddedResources.h"

#include <algorithm>

namespace NSSupport {

namespace {

char LowerAscii(char character) {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a')
                                                : character;
}

std::string LowerAscii(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char character) { return LowerAscii(character); });
    return text;
}

} // namespace

std::unique_ptr<NSPorter::CMedia> OpenModuleResource(const std::string& kind,
                                                     const std::string& name) {
    const std::string wanted = LowerAscii(name);
    for (const SEmbeddedResource& resource : GetEmbeddedResources()) {
        if (LowerAscii(resource.fKind) == LowerAscii(kind) && resource.fName == wanted) {
            return std::make_unique<NSPorter::CMemoryMedia>(static_cast<int64_t>(resource.fSize),
                                                            resource.fData);
        }
    }
    return nullptr;
}

std::vector<std::string> ListModuleResources(const std::string& kind) {
    std::vector<std::string> names;
    for (const SEmbeddedResource& resource : GetEmbeddedResources()) {
        if (LowerAscii(resource.fKind) == LowerAscii(kind)) {
            names.emplace_back(resource.fName);
        }
    }
    return names;
}

} // namespace NSSupport
