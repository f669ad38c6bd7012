// A module that does what the number of the current item says, well or badly.
#include <velorin_addin.h>

#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <stdexcept>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

#ifdef WITHOUT_A_PART
extern "C" void velorin_nowhere_to_be_found();
#endif

namespace {

/// All that it was told, as a text.
std::string toldBy(const velorin_addin_call& call) {
    char begin[6] = "";
    // The position is its own, so this moves nobody else's.
    const bool reads = ::read(call.file_handle, begin, 5) == 5 && ::write(call.file_handle, begin, 1) < 0;
    std::string text = call.file_name + std::string(reads ? " reads " : " does not read ") + begin;
    for (const int number : {call.current_step, call.current_item, call.selected_count, call.selected_kind})
        text += ' ' + std::to_string(number);
    for (int i = 0; i < call.selected_count; ++i)
        text += " #" + std::to_string(call.selected[i]);
    return text;
}

void spoil() {
    std::setlocale(LC_ALL, "C");
    sigset_t all;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, nullptr);
    std::signal(SIGTERM, SIG_IGN);
    umask(0777);
    (void)!chdir("/");
}

} // namespace

extern "C" void velorin_addin_run(const velorin_addin_call* call) {
#ifdef WITHOUT_A_PART
    velorin_nowhere_to_be_found();
#endif
    switch (call->current_item) {
    case 0:
        std::snprintf(call->error, call->error_size, "%s", toldBy(*call).c_str());
        break;
    case 1:
        spoil();
        break;
    case 2:
        throw std::runtime_error("thrown");
    case 3:
        throw 3;
    case 4: // no terminating zero
        std::memset(call->error, 'x', call->error_size);
        break;
    default:
        break;
    }
}
