#include "platform/widgets/SystemPrinters.h"

#include "platform/base/WholeFile.h"
#include "platform/device/DrawingStopped.h"
#include "platform/widgets/CupsQueues.h"
#include "platform/widgets/Dialogs.h"
#include "platform/widgets/LongWork.h"

#include <QDir>
#include <QFileInfo>

namespace {
const QString& pdfName() {
    static const QString name = PrinterDescription::Pdf().Name;
    return name;
}

/// A queue may have the name of the printer that is always there. The service's names have no blanks.
QString shownName(const QString& queue) {
    return queue == pdfName() ? queue + u" (CUPS)"_s : queue;
}

QString queueName(const QString& shown) {
    return shown == shownName(pdfName()) ? pdfName() : shown;
}

QString fileNameFor(QString title) {
    for (QChar& character : title)
        if (character == u'/' || character < u' ')
            character = u'-';
    return title + u".pdf"_s;
}

} // namespace

void SystemPrinters::show(const QString& text) const {
    if (Progress)
        Progress(text);
}

PrintResult SystemPrinters::printPage(const PlotPrinter& printer, const QString& title, const Paint& paint,
                                      const QString& name, const Taking& take) const {
    PrintResult result{PrintResult::CalledOff};
    LongWork printing(u"印刷中... (Esc で中止)"_s, [this](const QString& text) { show(text); });
    const auto work = [&](const LongWork::Progress& goesOn) {
        const PictureContent content = PdfPage(printer, title, paint, [&] { return goesOn(0, 0); })();
        if (!goesOn(0, 0))
            return;
        if (const auto problem = content.Problem ? content.Problem : take(content.Bytes))
            result = {PrintResult::Refused, name + u"\r\n"_s + *problem};
        else
            result.End = PrintResult::Done;
    };
    try {
        printing.Run(work);
    } catch (const DrawingStopped&) {
        return result;
    } catch (const std::bad_alloc&) {
        result = {PrintResult::Refused, name + u"\r\nメモリが足りません。"_s};
    }
    return result;
}

template<class Answer>
std::optional<Answer> SystemPrinters::ask(const std::function<std::optional<Answer>()>& question) {
    // A service that is not there says so at once; this is one that keeps silence.
    constexpr int silenceMs = 500, patienceMs = 3000;
    if (silent.isValid() && silent.elapsed() < patienceMs)
        return {};
    silent.invalidate();
    std::optional<Answer> answer;
    QElapsedTimer time;
    time.start();
    LongWork asking(u"プリンタに問い合わせています..."_s, [this](const QString& text) { show(text); });
    asking.Run([&](const LongWork::Progress&) { answer = question(); });
    if (!answer && time.elapsed() > silenceMs)
        silent.start();
    return answer;
}

std::optional<CupsQueues::Listing> SystemPrinters::list() {
    return ask<CupsQueues::Listing>([] { return CupsQueues::List(); });
}

std::optional<CupsQueues::Queue> SystemPrinters::askQueue(const QString& name) {
    auto queue = ask<CupsQueues::Queue>([name = queueName(name)] { return CupsQueues::Ask(name); });
    if (!queue)
        return {};
    queue->Description.Name = name;
    for (PrinterOption& option : queue->Options)
        option.Chosen = chosen.value(name).value(option.Name, option.Chosen);
    return queue;
}

QStringList SystemPrinters::Names() {
    QStringList names;
    if (const auto listing = list())
        for (const QString& queue : listing->Names)
            names.append(shownName(queue));
    return names << pdfName();
}

QString SystemPrinters::Default() {
    const auto listing = list();
    return listing && !listing->Default.isEmpty() ? shownName(listing->Default) : pdfName();
}

std::optional<PrinterDescription> SystemPrinters::Describe(const QString& name) {
    if (name == pdfName())
        return PrinterDescription::Pdf();
    const auto queue = askQueue(name);
    return queue ? std::optional(queue->Description) : std::nullopt;
}

QList<PrinterOption> SystemPrinters::Options(const QString& name) {
    const auto queue = name == pdfName() ? std::nullopt : askQueue(name);
    return queue ? queue->Options : QList<PrinterOption>();
}

void SystemPrinters::Choose(const QString& printer, const QString& option, const QString& value) {
    chosen[printer][option] = value;
}

PrintResult SystemPrinters::Print(const PlotPrinter& printer, const QString& title, const Paint& paint) {
    const QString name = printer.DeviceName();
    if (name == pdfName())
        return printToFile(printer, title, paint);
    const CupsQueues::Job job{queueName(name), title, printer.Paper(), chosen.value(name)};
    return printPage(printer, title, paint, name,
                     [&](const QByteArray& page) { return CupsQueues::Submit(job, page); });
}

PrintResult SystemPrinters::printToFile(const PlotPrinter& printer, const QString& title, const Paint& paint) {
    const QDir folder(pdfFolder.isEmpty() ? QDir::currentPath() : pdfFolder);
    const auto path = Dialogs::SaveFileName(Dialogs::FrontWindow(), u"PDF ファイルへの印刷"_s,
                                            folder.filePath(fileNameFor(title)), u"PDFファイル(*.pdf)|*.pdf"_s);
    if (!path)
        return {PrintResult::CalledOff};
    pdfFolder = QFileInfo(*path).absolutePath();
    return printPage(printer, title, paint, *path,
                     [&](const QByteArray& page) { return WholeFile::Write(*path, page); });
}
