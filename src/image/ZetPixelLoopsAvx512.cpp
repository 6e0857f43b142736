// For this set the compiler fuses the products and sums of complex multiplication into one operation
// with one rounding, whatever it is told about contraction, so the loops of the set below serve.
#define ZET_PIXEL_BUILD kAvx512Kernels
#define ZET_COMPLEX_BUILD kAvx2Complex
#define ZET_COMPLEX_BUILT_ELSEWHERE
#include "image/ZetPixelLoops"
