#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>

namespace NSLOPDLL {

/// One channel of a wave sample: zeroed values and one more zero behind them, which walks and empty
/// ranges at the very end may read. The memory comes as untouched zero pages.
template <typename Value>
class CSamplePlane {
public:
    CSamplePlane() noexcept = default;

    explicit CSamplePlane(uint32_t size) : fValues(Allocate(size)), fSize(size) {}

    /// A plane of `size` values that starts with those of `other`.
    CSamplePlane(uint32_t size, const CSamplePlane& other) : CSamplePlane(size) { CopyFrom(other); }

    CSamplePlane(const CSamplePlane& other)
        : fValues(other.Exists() ? Allocate(other.fSize) : nullptr), fSize(other.fSize) {
        CopyFrom(other);
    }
    CSamplePlane(CSamplePlane&&) noexcept = default;
    CSamplePlane& operator=(CSamplePlane&&) noexcept = default;
    ~CSamplePlane() = default;

    bool Exists() const noexcept { return fValues != nullptr; }
    const Value* Get() const noexcept { return fValues.get(); }
    Value* Get() noexcept { return fValues.get(); }

private:
    struct Free {
        void operator()(Value* values) const noexcept { std::free(values); }
    };

    static Value* Allocate(uint32_t size) {
        auto* values = static_cast<Value*>(std::calloc(size_t{size} + 1, sizeof(Value)));
        if (values == nullptr) {
            throw std::bad_alloc();
        }
        return values;
    }

    void CopyFrom(const CSamplePlane& other) noexcept {
        const size_t common = std::min(fSize, other.fSize);
        if (common > 0) {
            std::memcpy(fValues.get(), other.fValues.get(), common * sizeof(Value));
        }
    }

    std::unique_ptr<Value[], Free> fValues;
    uint32_t fSize = 0;
};

} // namespace NSLOPDLL
