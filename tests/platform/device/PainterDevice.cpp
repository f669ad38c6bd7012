// Vector output through QPainter; the rules that it shares with other devices are proved with them.
#include "platform/device/PainterDevice.h"

#include <QBuffer>
#include <QPdfWriter>
#include <gtest/gtest.h>

/// Three units on, three off: the pattern runs on while lines of one pen follow each other and begins anew after
/// anything else is drawn.
TEST(PainterDevice, LinesOfOnePenAreOneRun) {
    for (const bool apart : {false, true}) {
        QImage image(8, 6, QImage::Format_Mono);
        image.fill(1);
        {
            QPainter painter(&image);
            PainterDevice device(painter, {8, 6, 96, 96});
            device.SelectPen({PenStyle::Dot, 1, 0});
            device.LineTo({2, 0});
            const Pen dots = device.SelectPen(stockPen(Stock::NullPen));
            device.LineTo({2, 0});
            device.SelectPen(dots);
            if (apart)
                device.FillRect({0, 5, 1, 6}, {});
            device.LineTo({7, 0});
        }
        QString row;
        for (int x = 0; x < 8; ++x)
            row += image.pixelColor(x, 0) == QColor(Qt::white) ? u'.' : u'#';
        EXPECT_EQ(row, apart ? u".#####.."_s : u".###...#"_s);
    }
}

TEST(PainterDevice, TextAndHatchesStayVectors) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    {
        QPdfWriter writer(&buffer);
        writer.setResolution(600);
        QPainter painter(&writer);
        PainterDevice device(painter, {4000, 6000, 600, 600});
        device.SelectFont({.Height = 150, .Escapement = 900, .Face = u"ＭＳ Ｐゴシック"_s});
        for (int hatch = -1; hatch < 6; ++hatch) {
            device.SelectBrush({makeColor(0, 200, 0), hatch});
            device.Ellipse({hatch * 200, 400, hatch * 200 + 150, 600});
            device.Text({hatch * 200, 1000}, u"変位図 <a>\t1"_s);
        }
    }
    EXPECT_TRUE(!buffer.data().contains("/Subtype /Image") && buffer.data().contains("/Type /Font"));
}
