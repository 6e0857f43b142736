#include <zet/ZetCoreFunctions>
#include <zet/ZetCoreLibMgr>

#include <cmath>
#include <ctime>
#include <limits>
#include <utility>

#include "core/ZetUnitInit"

namespace zet {
namespace {

bool g_QorUseParallelLoops = true;
bool g_QorIsTimingLoops = false;

// Function-local, so that messages can be posted from any static initialiser.
ZetTextMsg& storedError()
{
    static ZetTextMsg message(ZetString(), ZetTextMsg::Error);
    return message;
}

[[maybe_unused]] const ZetTextMsg& s_errorReady = storedError();

}  // namespace

void postMessage(const ZetTextMsg& message)
{
    if (message.kind() == ZetTextMsg::Error) {
        storedError() = message;
    }
    ZetCoreLibMgr().textHandler()->postMessage(message);
}

ZetTextMsg lastError()
{
    return storedError();
}

double epsilonDouble()
{
    return std::numeric_limits<double>::epsilon();
}

bool isNaN(double x)
{
    return x != x;
}

double log1p(double x)
{
    const double u = 1.0 + x;
    const double correction = ((u - 1.0) - x) / u;
    return std::log(u) - correction;
}

bool enableParallelLoops(bool enable)
{
    return std::exchange(g_QorUseParallelLoops, enable);
}

bool useParallelLoops()
{
    return g_QorUseParallelLoops;
}

bool enableLoopTiming(bool enable)
{
    return std::exchange(g_QorIsTimingLoops, enable);
}

bool isTimingLoops()
{
    return g_QorIsTimingLoops;
}

unsigned long physicalRam()
{
    return 0;
}

unsigned long availableRam()
{
    return 0;
}

unsigned long timeStampFromStr(const ZetString& text)
{
    if (text.size() < 14) {
        return 0;
    }
    const auto field = [&](std::size_t index, std::size_t length) {
        return static_cast<int>(atoi(text.substr(index, length)));
    };
    std::tm calendar{};
    calendar.tm_sec = field(12, 2);
    calendar.tm_min = field(10, 2);
    calendar.tm_hour = field(8, 2);
    calendar.tm_mday = field(6, 2);
    calendar.tm_mon = field(4, 2) - 1;
    calendar.tm_year = field(0, 4) - 1900;
    calendar.tm_wday = -1;
    calendar.tm_yday = -1;
    calendar.tm_isdst = -1;
    const auto milliseconds = static_cast<unsigned long>(std::mktime(&calendar)) * 1000;
    if (text.size() < 18) {
        return milliseconds;
    }
    return milliseconds + static_cast<unsigned long>(field(15, 3));
}

}  // namespace zet
