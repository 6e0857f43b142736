#define ZET_PIXEL_BUILD kAvx2Kernels
#define ZET_COMPLEX_BUILD kAvx2Complex
#include "image/ZetPixelLoops"
