#include "Progress"

#include <unistd.h>

#include <cstdio>

namespace bandmath {

Progress::Progress(std::size_t total, bool quiet)
    : m_total(total), m_quiet(quiet), m_terminal(isatty(STDERR_FILENO) != 0), m_start(Clock::now())
{}

Progress::~Progress()
{
    if (m_lineOpen) {
        std::fputc('\n', stderr);
    }
}

void Progress::advance(std::size_t pixels)
{
    m_done += pixels;
    if (m_quiet) {
        return;
    }
    if (m_terminal) {
        showOnTerminal();
    } else {
        showInLog();
    }
}

void Progress::showOnTerminal()
{
    constexpr std::chrono::milliseconds kPause(100);
    const Clock::time_point now = Clock::now();
    if (m_done < m_total && now - m_shown < kPause) {
        return;
    }
    m_shown = now;
    const double done = static_cast<double>(m_done);
    const double seconds = std::chrono::duration<double>(now - m_start).count();
    std::fprintf(stderr, "\r%3.0f %%  %.1f million pixels a second ", 100 * done / static_cast<double>(m_total),
                 seconds > 0 ? done / seconds / 1e6 : 0.0);
    m_lineOpen = true;
}

void Progress::showInLog()
{
    const std::size_t tenths =
        static_cast<std::size_t>(10 * static_cast<double>(m_done) / static_cast<double>(m_total));
    if (tenths > m_tenths) {
        m_tenths = tenths;
        std::fprintf(stderr, "%zu %%\n", 10 * tenths);
    }
}

}  // namespace bandmath
