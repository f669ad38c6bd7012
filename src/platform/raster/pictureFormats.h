// The formats that a picture can be written in, by the endings of file names; PNG among them.
#pragma once

#include "platform/device/pictureFile.h"

/// By the ending of a file's name, in large or small letters: png, svg, pdf or trace; null for any other.
PictureFormat PictureFormatFor(const QString& fileName);

PictureEncoding PngPicture(const PictureFile& file, const Paint& paint);
