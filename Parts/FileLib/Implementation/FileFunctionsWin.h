// The family of platform file functions in one include.
#pragma once

#include "FileLib/Implementation/Aliases.h"
#include "FileLib/Implementation/FileChanges.h"
#include "FileLib/Implementation/FileInfo.h"
#include "FileLib/Implementation/NativePaths.h"
#include "FileLib/Implementation/SpecialFolders.h"
#include "FileLib/Implementation/SwapFilesContents.h"
#include "FileLib/Implementation/UniqueNames.h"
#include "FileLib/Implementation/Volumes.h"
#include "FileLib/Platform/KnownErrors.h"
#include "FileLib/Rules/NameMaking.h"
#include "FileLib/Rules/PathRules.h"
