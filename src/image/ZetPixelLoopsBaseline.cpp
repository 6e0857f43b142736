#define ZET_PIXEL_BUILD kBaselineKernels
#define ZET_COMPLEX_BUILD kBaselineComplex
#include "image/ZetPixelLoops"
