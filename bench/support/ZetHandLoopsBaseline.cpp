#define HAND_BUILD baselineLoops
#include "support/ZetHandLoopsBody"
