#include "Tests/Host/SameSoundBounds.h"

// Under Wine 8 one factor of the decay table is a last place off; the one loop here that uses it
// differs in 218 of its samples, by 2.8e-7 at most, and all else is the same. The power function
// comes with each Windows, so that others may round some more factors their own way.
const SSameSoundBounds kSameSoundBounds{400, 1e-6F, 4, 1};
