#include "Tests/Host/SameSoundBounds.h"

// The hash is this library's own output. That gcc and clang, with and without optimisation, on
// every instruction set reach the same one is what it shows.
const SSameSoundBounds kSameSoundBounds{.fHash = 10826482058728971377U};
