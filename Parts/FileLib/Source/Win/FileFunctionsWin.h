// The family of platform file functions in one include.
#pragma once

#include "FileLib/Source/Win/Aliases.h"
#include "FileLib/Source/Win/FileChanges.h"
#include "FileLib/Source/Win/FileInfo.h"
#include "FileLib/Source/Win/KnownErrors.h"
#include "FileLib/Source/Win/NameMaking.h"
#include "FileLib/Source/Win/PathRules.h"
#include "FileLib/Source/Win/SpecialFolders.h"
#include "FileLib/Source/Win/SwapFilesContents.h"
#include "FileLib/Source/Win/UniqueNames.h"
#include "FileLib/Source/Win/Volumes.h"
