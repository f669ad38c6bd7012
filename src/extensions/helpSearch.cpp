#include "extensions/helpSearch.h"

#include "extensions/helpText.h"
#include "platform/base/Lists.h"
#include "platform/base/NativePath.h"
#include "platform/base/Parallel.h"
#include "platform/base/ReadHandle.h"

#include <atomic>
#include <mutex>
#include <set>
#include <sys/stat.h>

namespace {

constexpr qint64 largestPage = 256 << 20;

struct Page {
    QString Path;
    qint64 Bytes = 0;
};

class Folders {
public:
    Folders(const helpSearch::Progress& folderProgress) : progress(folderProgress) {}

    /// Adds the pages of a folder that ends in a separator. False when stopped.
    bool Collect(const QString& folder, QList<Page>& pages) {
        struct stat status {};
        // The same folder again is a link in a circle, or a second way to what is found already.
        if (::stat(NativePath::Of(folder).c_str(), &status) != 0 || !seen.insert({status.st_dev, status.st_ino}).second)
            return true;
        if (progress && !progress(0, 0))
            return false;
        for (const QString& name : NativePath::Folders(folder))
            if (!name.startsWith(u'.') && !Collect(folder + name + u'/', pages))
                return false;
        for (const QString& name : NativePath::Files(folder, {u"*.htm*"_s}))
            if (::stat(NativePath::Of(folder + name).c_str(), &status) == 0 && S_ISREG(status.st_mode))
                pages.append({folder + name, std::min<qint64>(status.st_size, largestPage)});
        return true;
    }

private:
    const helpSearch::Progress& progress;
    std::set<std::pair<dev_t, ino_t>> seen;
};

QString textOf(const Page& page) {
    const ReadHandle file = ReadHandle::Open(page.Path);
    const qint64 size = std::min(file.Size(), largestPage);
    // The bytes and two for each of them as text.
    requireMemory(std::size_t(size) * 3);
    QByteArray bytes(size, Qt::Uninitialized);
    bytes.truncate(file.ReadAt(0, bytes.data(), size));
    return helpText::Decode(bytes);
}

/// Without a title when the page is not to be listed. `word` is empty for all pages, else in capital letters.
HelpTopic topicOf(const Page& page, const QString& word) {
    constexpr int excerptLimit = 128;
    // Large pages take their turn, so that their texts are not in memory side by side.
    constexpr qint64 large = 16 << 20;
    static std::mutex largePage;
    std::unique_lock turn(largePage, std::defer_lock);
    if (page.Bytes >= large)
        turn.lock();
    try {
        QString text = textOf(page);
        HelpTopic topic{helpText::ReadHelpTitle(text), {}, page.Path};
        if (topic.Title.isEmpty())
            return topic;
        topic.Description = helpText::MakeExcerpt(text, excerptLimit);
        if (word.isEmpty())
            return topic;
        helpText::MakeUpper(text);
        return helpText::FileHasWord(word, text) ? topic : HelpTopic();
    } catch (const std::bad_alloc&) {
        return {};
    }
}

bool scan(const QString& word, const QString& folder, QList<HelpTopic>& topics, const helpSearch::Progress& progress) {
    QList<Page> pages;
    // No folder at all would be the root of all.
    const bool going =
        folder.isEmpty() || Folders(progress).Collect(folder.endsWith(u'/') ? folder : folder + u'/', pages);
    qint64 total = 0, done = 0;
    for (const Page& page : pages)
        total += page.Bytes;
    std::vector<HelpTopic> found(std::size_t(pages.size()));
    std::atomic<bool> stopped = !going;
    std::mutex telling;
    parallelFor(int(pages.size()), [&](int i) {
        if (stopped)
            return;
        found[std::size_t(i)] = topicOf(pages[i], word);
        const std::lock_guard lock(telling);
        done += pages[i].Bytes;
        if (progress && !progress(done, total))
            stopped = true;
    });
    for (HelpTopic& topic : found)
        if (!topic.Title.isEmpty())
            topics.append(std::move(topic));
    return !stopped;
}

} // namespace

bool helpSearch::ListHelpFolder(const QString& folder, QList<HelpTopic>& topics, const Progress& progress) {
    return scan({}, folder, topics, progress);
}

bool helpSearch::SearchHelpFolder(const QString& word, const QString& folder, QList<HelpTopic>& topics,
                                  const Progress& progress) {
    QString upper = word;
    helpText::MakeUpper(upper);
    return scan(upper, folder, topics, progress);
}

qsizetype helpSearch::FirstRowFor(const QString& typed, qsizetype rowCount,
                                  const std::function<QString(qsizetype)>& titleOf) {
    for (qsizetype row = 0; row < rowCount && !typed.isEmpty(); ++row)
        if (typed.compare(titleOf(row).left(typed.size()), Qt::CaseInsensitive) <= 0)
            return row;
    return -1;
}
