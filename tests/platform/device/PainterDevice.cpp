#include "platform/device/PainterDevice.h"

#include <QBuffer>
#include <QPdfWriter>
#include <QProcess>
#include <QStandardPaths>
#include <gtest/gtest.h>

namespace {
using Drawing = std::function<void(DeviceContext&)>;

QByteArray pdfOf(const Drawing& draw) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setResolution(600);
    QPainter painter(&writer);
    {
        PainterDevice device(painter, 4000, 6000, 600, 600);
        draw(device);
    }
    painter.end();
    return buffer.data();
}

/// The drawing on a grid of pixels: "#" for pen or brush, "." for paper.
QString pixelsOf(const Drawing& draw) {
    QImage image(8, 6, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    {
        PainterDevice device(painter, 8, 6, 96, 96);
        draw(device);
    }
    painter.end();
    QString rows;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            rows += image.pixelColor(x, y) == QColor(Qt::white) ? u'.' : u'#';
        rows += u'\n';
    }
    return rows;
}

const Brush solid{makeColor(255, 0, 0), -1};
} // namespace

TEST(PainterDevice, AreasLeaveOutRightAndBottom) {
    const QString area = u"........\n.####...\n.####...\n.####...\n........\n........\n"_s;
    const QString filled = pixelsOf([](DeviceContext& device) {
        device.ClipRect({5, 1, 0, 5});
        device.SaveDC();
        device.ClipRect({0, 0, 1, 1});
        device.RestoreDC();
        device.FillRect({6, 4, 1, 0}, solid);
    });
    EXPECT_EQ(filled, area);
    const auto rectangle = [](DeviceContext& device, DeviceRect rect, int pen) {
        device.SelectBrush(solid);
        device.SelectPen(stockPen(pen));
        device.Rectangle(rect);
    };
    EXPECT_EQ(pixelsOf([&](DeviceContext& device) { rectangle(device, {1, 1, 5, 4}, Stock::BlackPen); }), area);
    EXPECT_EQ(pixelsOf([&](DeviceContext& device) { rectangle(device, {5, 4, 1, 1}, Stock::BlackPen); }), area);
    EXPECT_EQ(pixelsOf([&](DeviceContext& device) { rectangle(device, {1, 1, 6, 5}, Stock::NullPen); }), area);
    QImage dark(3, 2, QImage::Format_RGB32);
    dark.fill(Qt::black);
    const QString pictured = pixelsOf([&](DeviceContext& device) {
        device.DrawPicture({5, 4, 1, 1}, dark);
        device.DrawPicture({6, 0, 6, 6}, dark);
        device.DrawPicture({0, 0, 8, 6}, QImage());
    });
    EXPECT_EQ(pictured, area);
}

/// Three units on, three off: the pattern runs on while lines of one pen follow each other and begins anew after
/// anything else is drawn.
TEST(PainterDevice, LinesOfOnePenAreOneRun) {
    for (const bool apart : {false, true}) {
        const QString line = pixelsOf([&](DeviceContext& device) {
            device.SelectPen({PenStyle::Dot, 1, 0});
            device.MoveTo({0, 0});
            device.LineTo({2, 0});
            const Pen dots = device.SelectPen(stockPen(Stock::NullPen));
            device.LineTo({2, 0});
            device.SelectPen(dots);
            if (apart)
                device.FillRect({0, 5, 1, 6}, solid);
            device.LineTo({7, 0});
        });
        EXPECT_EQ(line.left(8), apart ? u".#####.."_s : u".###...#"_s);
    }
}

TEST(PainterDevice, RingsAreFilledTogether) {
    const QString ring = pixelsOf([](DeviceContext& device) {
        const DevicePoint points[] = {{1, 1}, {6, 1}, {6, 5}, {1, 5}, {3, 3}, {4, 3}, {4, 4}, {3, 4}, {9, 9}};
        const int counts[] = {4, 4, 7};
        device.SelectBrush(solid);
        device.SelectPen(stockPen(Stock::NullPen));
        device.PolyPolygon(points, counts);
    });
    EXPECT_EQ(ring.count(u'#'), 5 * 4 - 1) << ring.toStdString();
}

TEST(PainterDevice, TextAndHatchesStayVectors) {
    const auto draw = [](DeviceContext& device) {
        for (int hatch = -1; hatch < 6; ++hatch) {
            device.SelectBrush({makeColor(0, 200, 0), hatch});
            device.Rectangle({hatch * 200, 100, hatch * 200 + 150, 300});
            device.Ellipse({hatch * 200, 400, hatch * 200 + 150, 600});
        }
        Font font;
        font.Face = u"ＭＳ Ｐゴシック"_s;
        font.Height = 150;
        device.SelectFont(font);
        device.SetTextColor(makeColor(1, 2, 3));
        device.Text({100, 1000}, u"変位図 <a>\t1"_s);
        font.Escapement = 900;
        device.SelectFont(font);
        device.Text({2000, 3000}, u"Upright"_s);
    };
    const QByteArray pdf = pdfOf(draw);
    EXPECT_FALSE(pdf.contains("/Subtype /Image"));
    const QString reader = QStandardPaths::findExecutable(u"pdftotext"_s);
    if (reader.isEmpty())
        GTEST_SKIP() << "no pdftotext";
    QProcess process;
    process.start(reader, {u"-"_s, u"-"_s});
    process.write(pdf);
    process.closeWriteChannel();
    ASSERT_TRUE(process.waitForFinished());
    const QString text = QString::fromUtf8(process.readAllStandardOutput());
    EXPECT_TRUE(text.contains(u"変位図 <a> 1"_s) && text.contains(u"Upright"_s)) << text.toStdString();
}
