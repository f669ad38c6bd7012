// While it lives no file may grow beyond some bytes, as on a full disk. Needs no disk and no administrator.
#pragma once

#include <csignal>
#include <sys/resource.h>

class FullDisk {
public:
    explicit FullDisk(rlim_t bytes) {
        getrlimit(RLIMIT_FSIZE, &usual);
        const rlimit tight{bytes, usual.rlim_max};
        setrlimit(RLIMIT_FSIZE, &tight);
    }
    ~FullDisk() {
        setrlimit(RLIMIT_FSIZE, &usual);
        std::signal(SIGXFSZ, handler);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    rlimit usual{};
    void (*handler)(int) = std::signal(SIGXFSZ, SIG_IGN);
};
