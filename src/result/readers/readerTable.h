// The formats of result files: a row each, and the choice among them. A new format is a pair of files and a row.
#pragma once

#include "result/readers/LoadProgress.h"
#include "result/readers/ResultContent.h"

#include <QByteArrayView>

struct ResultReader {
    // For people who look for a file.
    const char16_t* Name;
    const char16_t* Endings; ///< of the files' names: patterns between semicolons
    /// Whether a file is one of these, by its first bytes (`RecognisedBytes` of them, or all when it has fewer) and its
    /// path.
    bool (*Recognises)(QByteArrayView start, const QString& path);
    /// Fills `content`, which is fresh, from an existing file that was recognised. False, whatever then stands in
    /// `content` but for the reason in its note, for one that cannot be read or used: with no items, nodes or elements,
    /// with more of anything than it can hold, or when `progress`, called from time to time, says no.
    bool (*Open)(const QString& path, ResultContent& content, const LoadProgress& progress);
};

inline constexpr int RecognisedBytes = 512;

std::span<const ResultReader> ResultReaders();

/// The first reader that recognises the file; null when none does, and for what is no existing file.
const ResultReader* ReaderFor(const QString& path);
