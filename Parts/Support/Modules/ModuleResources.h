// The resources that are built into the module that holds this code.
#pragma once

#include "PorterPackage/Core/Media/CMedia.h"

#include <memory>
#include <string>
#include <vector>

namespace NSSupport {

/// Kinds of resources. The first four hold text tables in resources whose names end in ".txt".
constexpr const char* kResourceKind_Strings = "SSTR";
constexpr const char* kResourceKind_Alerts = "SALR";
constexpr const char* kResourceKind_Menus = "SMNU";
constexpr const char* kResourceKind_Help = "SHLP";
constexpr const char* kResourceKind_Dialog = "DLOG";
constexpr const char* kResourceKind_Image = "BMP";

/// A media over the resource, which lives as long as the module. Null when there is none of that
/// name; names are told apart ignoring the case of ASCII letters.
std::unique_ptr<NSPorter::CMedia> OpenModuleResource(const std::string& kind,
                                                     const std::string& name);

/// The names of a kind's resources, in lower case.
std::vector<std::string> ListModuleResources(const std::string& kind);

} // namespace NSSupport
