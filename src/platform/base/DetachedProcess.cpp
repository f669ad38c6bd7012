#include "platform/base/DetachedProcess.h"

#include "platform/base/NativePath.h"

#include <QScopeGuard>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <string>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>
#include <vector>

namespace {

/// In the second child: becomes the program, or tells through `report` why not. Only calls that may stand between a
/// fork and what follows it.
[[noreturn]] void become(const char* program, char* const* arguments, int report) {
    ::setsid();
    sigset_t none;
    ::sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
    ::execv(program, arguments);
    const int error = errno;
    (void)!::write(report, &error, sizeof error);
    ::_exit(1);
}

std::optional<QString> inWords(int error) {
    return QString::fromStdString(std::system_category().message(error));
}

} // namespace

std::optional<QString> DetachedProcess::Start(const QString& program, const QStringList& arguments) {
    std::vector<std::string> texts{NativePath::Of(program).native()};
    for (const QString& argument : arguments)
        texts.push_back(NativePath::Of(argument).native());
    std::vector<char*> pointers;
    for (std::string& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);

    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0)
        return inWords(errno);
    const auto closeReading = qScopeGuard([&] { ::close(ends[0]); });
    // The child of a child that has ended belongs to the system, so that none stays behind with us.
    const pid_t child = ::fork();
    if (child == 0) {
        if (::fork() == 0)
            become(texts.front().c_str(), pointers.data(), ends[1]);
        ::_exit(0);
    }
    const int forkError = errno;
    ::close(ends[1]);
    if (child < 0)
        return inWords(forkError);
    while (::waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
    }
    int error = 0;
    const ssize_t told = ::read(ends[0], &error, sizeof error);
    return told == ssize_t(sizeof error) ? inWords(error) : std::nullopt;
}
