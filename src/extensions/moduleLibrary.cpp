#include "extensions/moduleLibrary.h"

#include "platform/base/Literals.h"
#include "platform/base/NativePath.h"
#include "platform/base/ReadHandle.h"

#include <QCryptographicHash>
#include <QHash>
#include <array>
#include <cfenv>
#include <clocale>
#include <csignal>
#include <cstring>
#include <dlfcn.h>
#include <elf.h>
#include <exception>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace {

using ElfStart = std::array<unsigned char, EI_NIDENT + 2 * sizeof(Elf64_Half)>;

ElfStart startOf(const QString& path) {
    ElfStart start{};
    ReadHandle::Open(path).ReadAt(0, start.data(), start.size());
    return start;
}

Elf64_Half halfAt(const ElfStart& start, std::size_t offset) {
    Elf64_Half half = 0;
    std::memcpy(&half, start.data() + offset, sizeof half);
    return half;
}

/// How a file that has not been touched looks.
struct Looks {
    dev_t device;
    ino_t number;
    off_t size;
    timespec written, changed;

    bool operator==(const Looks& other) const {
        const auto same = [](const timespec& a, const timespec& b) {
            return a.tv_sec == b.tv_sec && a.tv_nsec == b.tv_nsec;
        };
        return device == other.device && number == other.number && size == other.size && same(written, other.written) &&
               same(changed, other.changed);
    }
};

std::optional<Looks> looksOf(const QString& path) {
    struct stat about {};
    if (::stat(NativePath::Of(path).c_str(), &about) != 0)
        return {};
    return Looks{about.st_dev, about.st_ino, about.st_size, about.st_mtim, about.st_ctim};
}

QByteArray hashOf(const QString& path) {
    const ReadHandle file = ReadHandle::Open(path);
    if (!file.IsOpen())
        return {};
    QCryptographicHash hash(QCryptographicHash::Sha256);
    std::vector<char> part(std::size_t(1) << 16);
    qint64 offset = 0;
    while (const qint64 got = file.ReadAt(offset, part.data(), qint64(part.size()))) {
        hash.addData(QByteArrayView(part.data(), got));
        offset += got;
    }
    return hash.result().toHex();
}

/// Puts back what foreign code may have changed about this process and thread.
class ProcessState {
public:
    ProcessState() : locale(std::setlocale(LC_ALL, nullptr)), folder(::open(".", O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
        for (int number = 1; number < NSIG; ++number)
            known[std::size_t(number)] = ::sigaction(number, nullptr, &actions[std::size_t(number)]) == 0;
        ::pthread_sigmask(SIG_SETMASK, nullptr, &blocked);
        std::fegetenv(&arithmetic);
        fileMask = ::umask(0);
        ::umask(fileMask);
    }

    ~ProcessState() {
        ::umask(fileMask);
        std::fesetenv(&arithmetic);
        for (int number = 1; number < NSIG; ++number)
            if (known[std::size_t(number)])
                ::sigaction(number, &actions[std::size_t(number)], nullptr);
        ::pthread_sigmask(SIG_SETMASK, &blocked, nullptr);
        if (folder >= 0) {
            (void)!::fchdir(folder);
            ::close(folder);
        }
        ::uselocale(threadLocale);
        std::setlocale(LC_ALL, locale.c_str());
    }

    ProcessState(const ProcessState&) = delete;
    ProcessState& operator=(const ProcessState&) = delete;

private:
    std::string locale;
    locale_t threadLocale = ::uselocale(locale_t(0));
    int folder;
    std::array<struct sigaction, NSIG> actions{};
    std::array<bool, NSIG> known{};
    sigset_t blocked{};
    std::fenv_t arithmetic{};
    mode_t fileMask = 0;
};

using Entry = decltype(&velorin_addin_run);

/// A library while it is loaded. All that it wants of others must be there: a lack shows before anything runs.
class Library {
public:
    explicit Library(const QString& path) : handle(::dlopen(NativePath::Of(path).c_str(), RTLD_NOW | RTLD_LOCAL)) {
        if (handle)
            entry = reinterpret_cast<Entry>(::dlsym(handle, "velorin_addin_run"));
        if (!entry)
            problem = QString::fromLocal8Bit(::dlerror());
    }
    ~Library() {
        if (handle)
            ::dlclose(handle);
    }
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

    Entry Function() const { return entry; }
    const QString& Problem() const { return problem; }

private:
    void* handle;
    Entry entry = nullptr;
    QString problem;
};

QString runLoaded(const QString& path, const velorin_addin_call& call) {
    const ProcessState state;
    const Library library(path);
    if (!library.Function())
        return library.Problem();
    try {
        library.Function()(&call);
    } catch (const std::exception& thrown) {
        return QString::fromLocal8Bit(thrown.what());
    } catch (...) {
        return u"不明な例外が発生しました。"_s;
    }
    return {};
}

} // namespace

bool moduleLibrary::FitsHere(const QString& path) {
    static const ElfStart here = startOf(u"/proc/self/exe"_s);
    const ElfStart there = startOf(path);
    return std::memcmp(there.data(), here.data(), EI_OSABI) == 0 && halfAt(there, EI_NIDENT) == ET_DYN &&
           halfAt(there, EI_NIDENT + sizeof(Elf64_Half)) == halfAt(here, EI_NIDENT + sizeof(Elf64_Half));
}

QByteArray moduleLibrary::Fingerprint(const QString& path) {
    static QHash<QString, std::pair<Looks, QByteArray>> known;
    const auto looks = looksOf(path);
    if (!looks)
        return {};
    if (const auto found = known.constFind(path); found != known.cend() && found->first == *looks)
        return found->second;
    const QByteArray hash = hashOf(path);
    known.insert(path, {*looks, hash});
    return hash;
}

QString moduleLibrary::Run(const QString& path, velorin_addin_call call) {
    constexpr std::size_t errorBytes = 16384;
    std::vector<char> error(errorBytes, 0);
    call.size = sizeof call;
    call.interface_version = VELORIN_ADDIN_INTERFACE;
    call.error = error.data();
    call.error_size = errorBytes;
    const QString failure = runLoaded(path, call);
    error.back() = 0;
    return failure.isEmpty() ? QString::fromUtf8(error.data()).trimmed() : failure;
}
