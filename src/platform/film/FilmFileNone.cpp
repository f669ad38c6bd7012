// Stands in for FilmFile.cpp where FFmpeg's headers are missing: no film can be made.
#include "platform/film/FilmFile.h"

#include "platform/base/Literals.h"

struct FilmFile::Parts {};

FilmFile::FilmFile(const QString&, const FilmFormat&) {
    fail(FilmFailure::Stage::Library, *Unavailable());
}

FilmFile::~FilmFile() = default;

bool FilmFile::fail(FilmFailure::Stage stage, const QString& reason) {
    failure = FilmFailure{stage, reason};
    return false;
}

bool FilmFile::Add(const FilmFrame&) {
    return false;
}

std::optional<FilmFailure> FilmFile::Commit() {
    return failure;
}

std::optional<QString> FilmFile::Unavailable() {
    return u"this program was built without FFmpeg"_s;
}

bool FilmFile::Offers(const FilmCodec&) {
    return false;
}

double FilmFile::BytesPerMinute(const FilmFormat&, const FilmFrame&) {
    return 0;
}
