// The family of platform file functions in one include.
#pragma once

#include "FileLib/Implementation/FileChanges.h"
#include "FileLib/Implementation/FileInfo.h"
#include "FileLib/Implementation/SwapFilesContents.h"
#include "FileLib/Rules/Aliases.h"
#include "FileLib/Rules/KnownErrors.h"
#include "FileLib/Rules/NameMaking.h"
#include "FileLib/Rules/PathRules.h"
#include "FileLib/Rules/SpecialFolders.h"
#include "FileLib/Rules/UniqueNames.h"
#include "FileLib/Rules/Volumes.h"
