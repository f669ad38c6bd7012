#include "batch/CheckedOutput.h"

#include <utility>

namespace batch {

namespace {
constexpr qsizetype bufferSize = 1 << 16;
}

CheckedOutput::CheckedOutput(QIODevice& device) : target(device) {
    open(QIODevice::WriteOnly);
}

bool CheckedOutput::put(QByteArrayView bytes) {
    while (!problem && !bytes.isEmpty()) {
        // A full disk may take a part; it tells why when it is asked to take the rest.
        const qint64 written = target.write(bytes.data(), bytes.size());
        if (written <= 0)
            problem = target.errorString();
        else
            bytes = bytes.sliced(written);
    }
    return !problem;
}

qint64 CheckedOutput::writeData(const char* bytes, qint64 count) {
    if (waiting.size() + count > bufferSize)
        return put(std::exchange(waiting, {})) && put({bytes, count}) ? count : -1;
    waiting.append(bytes, count);
    return problem ? -1 : count;
}

std::optional<QString> CheckedOutput::Finish() {
    put(std::exchange(waiting, {}));
    return problem;
}

} // namespace batch
