#include "raster/Interrupt"

#include <csignal>

#include "raster/Failure"

namespace tools {

namespace {

volatile std::sig_atomic_t g_interrupted = 0;

extern "C" void noteSignal(int)
{
    g_interrupted = 1;
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
    on(SIGPIPE, SIG_IGN);
}

void throwIfInterrupted()
{
    if (g_interrupted) {
        throw Interrupted();
    }
}

}  // namespace tools
