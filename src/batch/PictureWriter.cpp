#include "batch/PictureWriter.h"

#include "batch/pictureOptions.h"
#include "platform/base/Parallel.h"

namespace batch {

void PictureWriter::Write(const QString& path, PictureEncoding encode) {
    Finish();
    current = path;
    problem = startBeside([path, encoding = std::move(encode)] { return SaveContent(path, encoding()); });
}

void PictureWriter::Finish() {
    if (!problem.valid())
        return;
    if (const std::optional<QString> why = problem.get())
        RefuseInput(current, *why);
}

} // namespace batch
