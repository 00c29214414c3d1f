#include "PorterPackage/Core/Media/MediaGrowth.h"

#include "Failure/Classes/XClasses.h"
#include "Failure/Raising/Raise.h"

#include <algorithm>
#include <limits>
#include <new>

namespace NSPorter {

namespace {

constexpr int64_t kMost = std::numeric_limits<int64_t>::max();

} // namespace

int64_t EndOfRun(int64_t position, int64_t count) {
    if (position < 0) {
        NSLichen::Raise(NSLichen::NSLichenDetails::XStdOutOfRange(""));
    }
    // Far below the point where growing further would overflow, and above any real memory.
    if (count > kMost / 4 - position) {
        NSLichen::Raise(std::bad_alloc());
    }
    return position + count;
}

int64_t GrownCapacity(int64_t capacity, int64_t needed) {
    const int64_t quarter = capacity / 4;
    const int64_t floor = quarter > 99 ? quarter : 100;
    return capacity + std::max((needed - capacity) * 3 / 2, floor);
}

} // namespace NSPorter
