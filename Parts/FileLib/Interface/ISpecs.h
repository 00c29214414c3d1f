#pragma once

#include <cstdint>

namespace NSFileLib {

// Specs name a volume, a folder or a file, which need not be there. Operations answer a status and
// throw nothing. An object that an operation returns belongs to the caller, who deletes it through
// its destructor; after a failure the result is null. One thread uses one object.

// Two specs of a kind are equal when their native paths are, ignoring case.

class IVolumeSpec {
public:
    virtual ~IVolumeSpec() = default;
    virtual IVolumeSpec* CreateCopy(int32_t* status) const = 0;
    /// 1 or 0 in `equal`.
    virtual int32_t IsEqual(const IVolumeSpec* other, int32_t* equal) const = 0;
    /// 1 for a live object.
    virtual int32_t IsValid() const = 0;
};

class IDirSpec {
public:
    virtual ~IDirSpec() = default;
    /// The last component of the path, in a buffer of kFileLibTextUnits.
    virtual int32_t GetName(char16_t* name) const = 0;
    virtual IDirSpec* CreateCopy(int32_t* status) const = 0;
    virtual int32_t IsEqual(const IDirSpec* other, int32_t* equal) const = 0;
    virtual int32_t IsValid() const = 0;
};

class IFileSpec {
public:
    virtual ~IFileSpec() = default;
    virtual int32_t GetName(char16_t* name) const = 0;
    virtual IFileSpec* CreateCopy(int32_t* status) const = 0;
    virtual int32_t IsEqual(const IFileSpec* other, int32_t* equal) const = 0;
    virtual int32_t IsValid() const = 0;
};

} // namespace NSFileLib
