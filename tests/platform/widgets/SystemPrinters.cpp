// The printers of a real print service, one that keeps silent, and the one that writes files.
#include "platform/widgets/SystemPrinters.h"

#include "CupsService.h"
#include "platform/widgets/CupsAttributes.h"
#include "platform/widgets/Dialogs.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>

namespace {
void paintLine(DeviceContext& device) {
    device.LineTo({100, 200});
}
} // namespace

TEST(CupsAttributes, SizesWithoutACodeGetTheirOwnAndWhatIsNoneIsLeftOut) {
    const Cups::Response told(ippNew());
    const auto tell = [&](const char* name, std::initializer_list<const char*> values) {
        ippAddStrings(told.get(), IPP_TAG_PRINTER, IPP_TAG_KEYWORD, name, int(values.size()), nullptr, values.begin());
    };
    tell("media-supported",
         {"custom_min_10x10mm", "custom_70x90mm_70x90mm", "jis_b5_182x257mm", "", "rubbish", "jpn_hagaki_100x148mm",
          "iso_a4_210x297mm", "custom_a4big_210.2x297mm", "na_ledger_11x17in", "custom_61x40in_61x40in"});
    tell("media-default", {"jpn_hagaki_100x148mm"});
    tell("sides-supported", {"one-sided"});
    tell("print-color-mode-supported", {"color", "sepia"});
    ippAddInteger(told.get(), IPP_TAG_PRINTER, IPP_TAG_INTEGER, "media-left-margin-supported", 635);
    ippAddResolution(told.get(), IPP_TAG_PRINTER, "printer-resolution-default", IPP_RES_PER_CM, 100, 100);
    const PrinterDescription read = Cups::DescriptionOf(told, u"q"_s);
    EXPECT_EQ(read.DotsPerInch, 254);
    EXPECT_EQ(read.DefaultPaper, 43);
    QList<int> codes;
    for (const PrinterPaper& paper : read.Papers)
        codes.append(paper.Code);
    EXPECT_EQ(codes, (QList<int>{256, 13, 43, 9, 3, 257}));
    EXPECT_EQ(read.Papers[0].Name, u"70 x 90 mm"_s);
    EXPECT_EQ(read.Papers[2].Unprintable, (SheetMargins{6.35f, 0, 0, 0}));
    const QList<PrinterOption> options = Cups::OptionsOf(told);
    ASSERT_EQ(options.size(), 1) << "no choice, no option";
    EXPECT_EQ(options[0].Choices[1].Caption, u"sepia"_s);
    EXPECT_EQ(options[0].Chosen, u"color"_s);
    EXPECT_FALSE(Cups::DescriptionOf(Cups::Response(ippNew()), {}).Papers.isEmpty());
}

TEST(SystemPrinters, QueuesAreListedAskedAndServed) {
    const CupsService service;
    if (!service.IsRunning())
        GTEST_SKIP() << "no CUPS daemon can be started here";
    SystemPrinters printers;
    EXPECT_EQ(printers.Names(), QStringList{u"PDF"_s});
    for (const QString& name : {u"zeichner"_s, u"Büro"_s, u"PDF"_s})
        ASSERT_TRUE(service.AddQueue(name));
    ASSERT_TRUE(service.Run(u"lpadmin"_s, {u"-d"_s, u"Büro"_s}));
    EXPECT_EQ(printers.Names(), (QStringList{u"Büro"_s, u"PDF (CUPS)"_s, u"zeichner"_s, u"PDF"_s}));
    std::optional<PlotPrinter> printer = printers.Open({}, PlotPrinter::Landscape, 8);
    ASSERT_TRUE(printer);
    EXPECT_EQ(printer->DeviceName(), u"Büro"_s);
    EXPECT_EQ(printer->PaperSize(), 8);
    EXPECT_EQ(printer->DotsPerInch(), 600);
    EXPECT_NEAR(printer->Paper().Unprintable.Left, 4.94, 0.01);
    EXPECT_NEAR(printer->Measures().OffsetX / 600.0 * 25.4, 7.06, 0.05) << "the wider end of the sheet";

    const QList<PrinterOption> options = printers.Options(u"Büro"_s);
    ASSERT_EQ(options.size(), 4);
    for (const PrinterOption& option : options)
        printers.Choose(u"Büro"_s, option.Name, option.Choices[1].Value);
    EXPECT_EQ(printers.Options(u"Büro"_s)[0].Chosen, u"two-sided-long-edge"_s);
    EXPECT_EQ(printers.Options(u"zeichner"_s)[0].Chosen, u"one-sided"_s);
    EXPECT_EQ(printers.Print(*printer, u"図 1"_s, paintLine).End, PrintResult::Done);
    EXPECT_TRUE(TestFolder::Read(service.Printed(u"Büro"_s)).contains("/MediaBox [0 0 1191.000000 842.0"));
    for (const char* told : {"図 1", "two-sided-long-edge", "tray-1", "color"})
        EXPECT_TRUE(service.Job(1).contains(told)) << told;
    ASSERT_TRUE(service.AddQueue(u"PDF"_s));
    EXPECT_EQ(printers.Print(*printers.Open(u"PDF (CUPS)"_s, 1, 9), u"t"_s, paintLine).End, PrintResult::Done);
    EXPECT_TRUE(service.Job(2).contains("iso_a4_210x297mm"));

    // What is refused has the name and the reason; what has gone is not there.
    ASSERT_TRUE(service.Run(u"cupsreject"_s, {u"Büro"_s}) && service.Run(u"lpadmin"_s, {u"-x"_s, u"zeichner"_s}));
    const PrintResult refused = printers.Print(*printer, u"t"_s, paintLine);
    EXPECT_EQ(refused.End, PrintResult::Refused);
    EXPECT_TRUE(refused.Problem.startsWith(u"Büro\r\n") && refused.Problem.size() > 20)
        << refused.Problem.toStdString();
    EXPECT_FALSE(printers.Open(u"zeichner"_s, 1, 9));
}

TEST(SystemPrinters, AServiceThatKeepsSilentIsGivenUp) {
    const TestFolder folder;
    const QByteArray path = folder.Path(u"socket"_s).toUtf8();
    sockaddr_un address{AF_UNIX, {}};
    ASSERT_LT(std::size_t(path.size()), sizeof address.sun_path);
    std::ranges::copy(path, address.sun_path);
    const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
    ASSERT_TRUE(bind(socket, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0 && listen(socket, 5) == 0);
    qputenv("CUPS_SERVER", path);
    SystemPrinters printers;
    EXPECT_EQ(printers.Names(), QStringList{u"PDF"_s});
    EXPECT_EQ(printers.Default(), u"PDF"_s);
    EXPECT_FALSE(printers.Open(u"q"_s, 1, 9));
    EXPECT_TRUE(printers.Open({}, 1, 9));
    close(socket);
    qunsetenv("CUPS_SERVER");
}

TEST(SystemPrinters, PdfFilesAreWholeOrNotThere) {
    const TestFolder folder;
    SystemPrinters printers;
    const std::optional<PlotPrinter> printer = printers.Open(u"PDF"_s, PlotPrinter::Portrait, 9);
    Dialogs::Testing::Start();
    const auto print = [&](const std::optional<QString>& path) {
        Dialogs::Testing::QueueFile(path);
        return printers.Print(*printer, u"a/b"_s, paintLine);
    };
    EXPECT_EQ(print(folder.Path(u"x.pdf"_s)).End, PrintResult::Done);
    EXPECT_TRUE(TestFolder::Read(folder.Path(u"x.pdf"_s)).startsWith("%PDF"));
    EXPECT_EQ(print(std::nullopt).End, PrintResult::CalledOff);
    EXPECT_EQ(Dialogs::Testing::Asked().last().Text, folder.Path(u"a-b.pdf"_s)) << "beside the last one";
    const PrintResult refused = print(folder.Path(u"none/x.pdf"_s));
    EXPECT_EQ(refused.End, PrintResult::Refused);
    EXPECT_TRUE(refused.Problem.startsWith(folder.Path(u"none/x.pdf\r\n"_s)));
    Dialogs::Testing::Stop();
}
