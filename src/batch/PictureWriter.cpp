#include "batch/PictureWriter.h"

#include "batch/pictureOptions.h"

#include <system_error>

namespace batch {

void PictureWriter::Write(const QString& path, PictureEncoding encode) {
    Finish();
    current = path;
    auto work = [path, encoding = std::move(encode)] { return SaveContent(path, encoding()); };
    try {
        problem = std::async(std::launch::async, work);
    } catch (const std::system_error&) {
        // No thread to be had: then not at the same time.
        problem = std::async(std::launch::deferred, work);
    }
}

void PictureWriter::Finish() {
    if (!problem.valid())
        return;
    if (const std::optional<QString> why = problem.get())
        RefuseInput(current, *why);
}

} // namespace batch
