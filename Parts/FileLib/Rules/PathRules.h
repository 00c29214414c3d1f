// Which names and paths are well formed. Pure functions; nothing here looks at a disk.
#pragma once

#include <array>
#include <cstddef>
#include <limits>
#include <string>
#include <string_view>

namespace NSFileLibInternals {

constexpr size_t kMaxNameLength = 256; // UTF-16 units
constexpr size_t kMinPathLength = 3;
constexpr size_t kMaxPathLength = 260;
constexpr size_t kNoPathLimit = std::numeric_limits<size_t>::max();

constexpr std::u16string_view kNameWhiteSpace = u" \f\n\r\t\v";
constexpr char16_t kListSeparator = u';';
constexpr std::u16string_view kAliasExtensions = u".lnk;.pif";
constexpr std::u16string_view kDefaultTempExtension = u".tmp";
constexpr std::u16string_view kTextFileKinds = u".txt;.doc";
constexpr std::u16string_view kBinaryFileKinds = u".bin;.dat;.raw";

/// 1 to 25, 27 to 31 and nine signs. Character 26 is legal.
constexpr std::array<char16_t, 39> kForbiddenCharacters = {
    1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 11,  12,  13,  14,  15,  16,  17,   18,  19, 20,
    21, 22, 23, 24, 25, 27, 28, 29, 30, 31, '*', '?', '<', '>', '"', '|', '\\', '/', ':'};

/// Compared ignoring case, with the stem of a name up to its first ".". No pointers, which every
/// load would relocate.
constexpr char16_t kReservedNames[37][9] = {
    u"CON",      u"PRN",     u"AUX",      u"NUL",    u"COM1",    u"COM2",  u"COM3",     u"COM4",
    u"COM5",     u"COM6",    u"COM7",     u"COM8",   u"COM9",    u"LPT1",  u"LPT2",     u"LPT3",
    u"LPT4",     u"LPT5",    u"LPT6",     u"LPT7",   u"LPT8",    u"LPT9",  u"$MFT",     u"$MFTMirr",
    u"$LogFile", u"$Volume", u"$AttrDef", u".",      u"$Bitmap", u"$Boot", u"$BadClus", u"$Secure",
    u"$Upcase",  u"$Extend", u"$Quota",   u"$ObjId", u"$Reparse"};

bool IsForbiddenCharacter(char16_t unit) noexcept;
bool IsNameWhiteSpace(char16_t unit) noexcept;

/// Whether the stem up to the first "." is a reserved name.
bool IsReservedName(const std::u16string& name);
bool IsValidFileName(const std::u16string& name);

/// Whether the extension, with its ".", is in a list parted by ";". Ignores case; an empty
/// extension is in no list.
bool IsExtensionInList(const std::u16string& extension, std::u16string_view list);

bool IsSharePath(const std::u16string& path) noexcept;

/// Where a path goes on behind its volume, as a position; what stands before need not be a valid
/// volume.
size_t FindVolumeEnd(const std::u16string& path) noexcept;

/// Drive form "C:\" or share form "\\server\share\"; a missing last "\" is forgiven.
bool WinIsValidVolumePath(const std::u16string& path);

/// The path rule with the limits of the caller, in units, both inclusive.
bool IsPathWithin(const std::u16string& path, size_t least, size_t most);
/// 3 to 260 units.
bool WinIsValidPath(const std::u16string& path);
bool WinIsValidFilePath(const std::u16string& path);

} // namespace NSFileLibInternals
