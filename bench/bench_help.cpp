// Searching the help: a folder of many pages, beside reading, decoding and upper-casing its bytes.
#include "Table.h"

#include "extensions/helpSearch.h"
#include "extensions/helpText.h"
#include "platform/base/Literals.h"
#include "platform/base/NativePath.h"

#include <QDir>
#include <QFile>

namespace {

constexpr int pages = 2000, pageBytes = 25000;

/// 50 MB in 20 folders, in English and Japanese by turns, as UTF-8 that is declared.
const QString& folder() {
    static const QString made = [] {
        const QString root = QStringLiteral(VELORIN_BENCH_FOLDER "/help/");
        for (int i = 0; i < pages; ++i) {
            const QString place = root + QString::number(i % 20);
            QDir().mkpath(place);
            QString text = u"<html><head><meta charset=\"utf-8\"><title>Page %1</title></head>\n"_s.arg(i);
            const QString line =
                i % 2 ? u"<p>要素の<b>コンター</b>を表示し、<a href=\"mesh.html\">メッシュ</a>を重ねます。</p>\n"_s
                      : u"<p>Shows the <b>contour</b> of the elements with the <a href=\"mesh.html\">"
                        "net</a> on it.</p>\n"_s;
            const qsizetype lineBytes = line.toUtf8().size();
            for (qsizetype bytes = text.size(); bytes < pageBytes; bytes += lineBytes)
                text += line;
            QFile file(place + u"/%1.html"_s.arg(i));
            if (!file.open(QIODevice::WriteOnly) || file.write(text.toUtf8()) < 0)
                qFatal("no room for the pages");
        }
        return root;
    }();
    return made;
}

void readDecodeUpper() {
    for (const QString& place : NativePath::Folders(folder()))
        for (const QString& name : NativePath::Files(folder() + place, {u"*"_s})) {
            QFile file(folder() + place + u'/' + name);
            if (file.open(QIODevice::ReadOnly))
                benchmark::DoNotOptimize(QString::fromUtf8(file.readAll()).toUpper());
        }
}

/// Times are per page.
void search(benchmark::State& state, const QString& word, qsizetype expected) {
    Table::Measure(state, pages,
                   {[&] {
                        QList<HelpTopic> topics;
                        if (word.isEmpty())
                            helpSearch::ListHelpFolder(folder(), topics);
                        else
                            helpSearch::SearchHelpFolder(word, folder(), topics);
                        if (topics.size() != expected)
                            qFatal("the search is wrong");
                    },
                    readDecodeUpper,
                    {}});
    state.SetLabel("4 s, ratio 3");
}

} // namespace

int main(int argc, char** argv) {
    const std::tuple<const char*, QString, qsizetype> rows[] = {
        {"all pages", {}, pages},
        {"a word that is nowhere", u"eigenvalue"_s, 0},
        {"a word in tags alone", u"mesh.html"_s, 0},
        {"a word in half of the pages", u"コンター"_s, pages / 2},
    };
    for (const auto& [name, word, expected] : rows)
        benchmark::RegisterBenchmark(name, search, word, expected)->Iterations(5)->UseManualTime();
    return Table::Main(argc, argv);
}
