#define HAND_BUILD avx512Loops
#include "support/ZetHandLoopsBody"
