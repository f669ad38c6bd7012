#include "output/windows/printPage.h"

#include "app/mdApplication.h"
#include "app/windows/ShowMessage.h"
#include "output/mdPage.h"
#include "platform/base/NativePath.h"
#include "platform/device/Printers.h"

using mdApplication::ShowMessage;

bool PrintPage(Session& session, const PlotPrinter& printer) {
    const PageSettings& page = session.Settings.Page;
    if (mdPage::PaperScale(page) > 0 && !mdPage::Holds(page, printer, session.Model.Mesh, session.View.ViewBounds) &&
        ShowMessage(
            u"縮尺 1:%1 では図が余白の内側に収まりません。\r\nこのまま印刷します。"_s.arg(page.ScaleDenominator),
            MessageStyle::Ask) != MessageAnswer::Yes)
        return false;
    const QString title = NativePath::Shown(mdApplication::PathPart(session.Model.FileName, mdApplication::FileName));
    const PrintResult result = session.Plotter.PrintDocument(printer, title);
    if (result.End == PrintResult::Refused)
        ShowMessage(result.Problem, MessageStyle::Stop);
    return result.End == PrintResult::Done;
}
