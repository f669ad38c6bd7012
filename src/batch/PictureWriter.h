// Writes pictures one after the other while the next one is being painted.
#pragma once

#include "platform/raster/pictureFormats.h"

#include <future>

namespace batch {

class PictureWriter {
public:
    /// Ends the last picture; whether that went well is not told.
    ~PictureWriter() = default;

    /// Begins to encode and write a picture, once the one before is in its place. Stops the command when that one can't
    /// be written; each file is then as it was.
    void Write(const QString& path, PictureEncoding encode);
    /// Waits for the last one, and stops the command in the same way.
    void Finish();

private:
    QString current;
    std::future<std::optional<QString>> problem; ///< of the current one; its end is waited for
};

} // namespace batch
