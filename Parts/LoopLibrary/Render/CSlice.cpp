#include "LoopLibrary/Render/CSlice.h"

namespace NSLOPDLL {

CSlice::~CSlice() = default;

} // namespace NSLOPDLL
