#include "platform/widgets/EndSignals.h"

#include <QSocketNotifier>
#include <csignal>
#include <sys/socket.h>
#include <unistd.h>

namespace {

constexpr int endingSignals[] = {SIGTERM, SIGINT, SIGHUP};
// A handler may do next to nothing: it passes the word on through a pair of sockets.
int ends[2] = {-1, -1};

void passOn(int) {
    const char word = 1;
    [[maybe_unused]] const auto written = write(ends[0], &word, sizeof word);
}

void setHandlers(void (*handler)(int)) {
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    for (const int signal : endingSignals)
        sigaction(signal, &action, nullptr);
}

} // namespace

EndSignals::EndSignals() {
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, ends) != 0)
        return;
    auto* notifier = new QSocketNotifier(ends[1], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this] {
        char words[16];
        if (read(ends[1], words, sizeof words) > 0)
            emit Asked();
    });
    setHandlers(passOn);
}

EndSignals::~EndSignals() {
    if (ends[0] < 0)
        return;
    setHandlers(SIG_DFL);
    for (int& end : ends)
        close(std::exchange(end, -1));
}
