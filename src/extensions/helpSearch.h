// Finds the pages of a help folder, all of them or those with a word. There is no index: each time the pages are read.
// Opens and shows none of them.
#pragma once

#include <QList>
#include <QString>
#include <functional>

/// A page as a list shows it.
struct HelpTopic {
    QString Title;
    QString Description; ///< the page's excerpt
    QString FileName;

    bool operator==(const HelpTopic&) const = default;
};

namespace helpSearch {
/// Told how many bytes of how many are read; false stops the search. Called on several threads, one at a time.
using Progress = std::function<bool(qint64 done, qint64 total)>;

/// The files "*.htm*" of `folder` and of the folders in it, those of a folder behind those in its folders. What has no
/// title, cannot be read or is no regular file is left out, and so are folders that start with "." and each one that
/// a link has led to before. Of a page the first 256 MB count. False, with what was found so far, when stopped.
bool ListHelpFolder(const QString& folder, QList<HelpTopic>& topics, const Progress& progress = {});

/// Likewise those that have `word`, in capital letters or small ones, outside their tags.
bool SearchHelpFolder(const QString& word, const QString& folder, QList<HelpTopic>& topics,
                      const Progress& progress = {});

/// The row of a list in the order of its titles where someone who has typed `typed` is led to: the first one whose
/// title, cut to the same length, is not below it without regard to case. -1 if there is none, or nothing typed.
qsizetype FirstRowFor(const QString& typed, qsizetype rowCount, const std::function<QString(qsizetype)>& titleOf);
} // namespace helpSearch
