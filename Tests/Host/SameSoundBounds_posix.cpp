#include "Tests/Host/SameSoundBounds.h"

const SSameSoundBounds kSameSoundBounds{};
