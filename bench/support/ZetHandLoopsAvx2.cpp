#define HAND_BUILD avx2Loops
#include "support/ZetHandLoopsBody"
