#include "LoopLibrary/Render/Slices/CSlice.h"

namespace NSLOPDLL {

CSlice::~CSlice() = default;

} // namespace NSLOPDLL
