#include "Interrupt"

#include <unistd.h>

#include <csignal>

#include "Failure"

namespace bandmath {

namespace {

volatile std::sig_atomic_t g_interrupted = 0;

extern "C" void noteSignal(int)
{
    g_interrupted = 1;
}

/// The remainder of the equation language divides by the processor, which faults on zero. It
/// serves numbers alone, never bands, so the fault comes with the first window, before there is
/// any output.
extern "C" void explainFault(int)
{
    constexpr char kText[] = "bandmath: The equation divides a whole number by zero with '%'.\n";
    const ssize_t written = write(STDERR_FILENO, kText, sizeof kText - 1);
    _exit(written < 0 ? 2 : 1);
}

void on(int signal, void (*handler)(int))
{
    struct sigaction action = {};
    action.sa_handler = handler;
    sigaction(signal, &action, nullptr);
}

}  // namespace

void watchSignals()
{
    on(SIGINT, noteSignal);
    on(SIGTERM, noteSignal);
    on(SIGHUP, noteSignal);
    on(SIGXFSZ, SIG_IGN);
    on(SIGFPE, explainFault);
}

void throwIfInterrupted()
{
    if (g_interrupted) {
        throw Interrupted();
    }
}

}  // namespace bandmath
