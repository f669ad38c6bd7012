// Pictures as the companion makes them, against pictures that were looked at once. Each has a control: a setting that
// must change it, so that a comparison that could not fail would show.
#include "batch/commandLine.h"

#include "Golden.h"
#include "Picture.h"
#include "property/drawingElements.h"
#include "result/VrfBuilder.h"
#include "view/scene/Session.h"

#include <QBuffer>
#include <gtest/gtest.h>

namespace {

/// Nine quadrilaterals, some of them split into triangles, and a line element on top; elements vanish in step 2. Items:
/// displacement X and Y and a stress at the nodes, a stress in the quadrilaterals (type 4), one in the triangles (type
/// 3).
VrfBuilder mixedModel() {
    VrfBuilder file;
    const auto item = [&](const char16_t* name, qint32 type, qint32 flags) {
        file.items.push_back({QString::fromUtf16(name), type, flags});
    };
    item(u"変位X", -1, 1);
    item(u"変位Y", -1, 2);
    item(u"応力", -1, 0);
    item(u"四角形応力", 4, 0);
    item(u"三角形応力", 3, 0);
    std::vector<double> ux, uy, stress;
    for (int j = 0; j < 4; ++j)
        for (int i = 0; i < 4; ++i) {
            file.nodes.push_back({i + 0.1 * j, j - 0.05 * i * j});
            ux.push_back(0.01 * i * (3 - j));
            uy.push_back(-0.008 * i * i);
            stress.push_back(i * i - 2.5 * j);
        }
    std::vector<qint32> types;
    const auto element = [&](std::vector<qint32> nodes, qint32 type) {
        file.elements.push_back(std::move(nodes));
        types.push_back(type);
    };
    for (int j = 0; j < 3; ++j)
        for (int i = 0; i < 3; ++i) {
            const int a = j * 4 + i + 1;
            if (i == j) {
                element({a, a + 1, a + 5}, 3);
                element({a, a + 5, a + 4}, 3);
            } else {
                element({a, a + 1, a + 5, a + 4}, 4);
            }
        }
    element({13, 16}, 1);
    file.steps.push_back(
        {0, QStringLiteral("初期"), types, {ux, uy, stress, {1, 2, 3, 4, 5, 6}, {7, 8, 9, 10, 11, 12}}});
    for (std::vector<double>* values : {&ux, &uy, &stress})
        for (double& value : *values)
            value *= 1.5;
    types[2] = types[3] = -1;
    file.steps.push_back({0.5, QStringLiteral("撤去"), types, {ux, uy, stress, {3, 4, 5, 6}, {8, 9, 10, 11, 12, 13}}});
    return file;
}

/// The same nodes with bars alone.
VrfBuilder barModel() {
    VrfBuilder file = mixedModel();
    file.elements = {{1, 6}, {6, 11}, {11, 16}, {1, 4}, {4, 16}};
    for (auto& step : file.steps) {
        step.types = {4, 4, 3, 3, 4};
        step.values[3] = {1, 2, 3};
        step.values[4] = {7, 8};
    }
    return file;
}

VrfBuilder constantModel() {
    VrfBuilder file = mixedModel();
    file.steps[0].values[2].assign(16, 5);
    return file;
}

struct Case {
    const char* name;
    VrfBuilder (*model)();
    QStringList options;
    QStringList control; ///< options that must change the picture
};

QStringList words(const char* text) {
    return QString::fromUtf8(text).split(u' ', Qt::SkipEmptyParts);
}

class GoldenPictures : public testing::Test {
protected:
    /// The bytes of one picture in the format of `ending`.
    QByteArray render(const Case& c, const QStringList& more, const QString& ending, const char* size) {
        const QString input = folder.Write(c.model().Bytes(), QString::fromLatin1(c.name) + u".vrf"_s);
        const QString output = folder.Path(QString::fromLatin1(c.name) + ending);
        QBuffer out, errors;
        out.open(QIODevice::WriteOnly);
        errors.open(QIODevice::WriteOnly);
        const QStringList arguments =
            QStringList{u"render"_s, input, u"-o"_s, output, u"--size"_s, QString::fromLatin1(size)} + c.options + more;
        EXPECT_EQ(batch::Run(arguments, {out, errors}), batch::Done) << errors.data().toStdString();
        QFile file(output);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }

    TestFolder folder;
};

const char quiet[] = "--set contour/legend=False --set displacement/legend=False --set vector/legend=False";

std::vector<Case> cases() {
    const QStringList plain = words(quiet) + words("--set displacement/fid=0");
    const QStringList otherScale = words("--set displacement/scale=50");
    const auto with = [&](const char* options) { return plain + words(options); };
    std::vector<Case> all;
    static const char* const schemes[] = {"scheme0", "scheme1", "scheme2", "scheme3", "scheme4", "scheme5"};
    for (int scheme = 0; scheme < 6; ++scheme)
        all.push_back({schemes[scheme], mixedModel,
                       with("--item 3 --set contour/colors/mid=0x0000ff00 --set contour/values/automatic=False "
                            "--set contour/values/min=-8 --set contour/values/max=9 --set contour/values/div=5 --set") +
                           QStringList{u"contour/colors/index=%1"_s.arg(scheme)},
                       words("--set contour/reverse=True")});
    const QStringList bare =
        words(quiet) + words("--mesh off --set contour/values/automatic=False --set contour/values/div=1");
    all.push_back(
        {"displaced1", mixedModel, bare + words("--set displacement/fid=1 --set displacement/scale=4000"), otherScale});
    all.push_back({"displaced2", mixedModel, bare + words("--set displacement/fid=2 --set displacement/orgmesh=True"),
                   otherScale});
    all.push_back({"displaced3", mixedModel, bare + words("--set displacement/fid=3 --step 2"), words("--step 1")});
    all.push_back({"vectorsOnNodes", mixedModel, with("--set vector/items/itemset=u,1,2 --set vector/legend=True"),
                   words("--set vector/scale=100")});
    all.push_back({"vectorsOnElements", mixedModel,
                   with("--set vector/items/itemset=s,4,4 --set vector/fid=1 --set vector/scale=30"),
                   words("--set vector/fid=0")});
    all.push_back({"numbersOnNodes", mixedModel, with("--item 3 --set value/disp=True"), words("--item 2")});
    all.push_back({"numbersOnElements", mixedModel, with("--item 5 --set value/disp=True"), words("--item 4")});
    all.push_back({"vanished", mixedModel, words("--item 3 --step 2"), words("--step 1")});
    all.push_back(
        {"bars", barModel, words("--item 3 --set value/disp=True"), words("--mesh off --set value/disp=False")});
    all.push_back({"constant", constantModel, words("--item 3"), words("--item 2")});
    all.push_back({"difference", mixedModel,
                   words("--item 3 --step 2 --set difference/std=1 --set difference/dsp=1 --set difference/cnt=1 "
                         "--set difference/val=1 --set value/disp=True"),
                   words("--set difference/cnt=0")});
    all.push_back(
        {"everything", mixedModel,
         words("--item 4 --set value/disp=True --set vector/items/itemset=u,1,2 --set displacement/orgmesh=True"),
         words("--zoom 2")});
    return all;
}

TEST_F(GoldenPictures, Traces) {
    for (const Case& c : cases()) {
        const QByteArray trace = render(c, {}, u".trace"_s, "400x300");
        EXPECT_TRUE(Golden().MatchesText(u"traces/%1.trace"_s.arg(QLatin1StringView(c.name)), trace));
        EXPECT_NE(render(c, c.control, u".trace"_s, "400x300"), trace) << c.name;
    }
}

TEST_F(GoldenPictures, Pixels) {
    for (const Case& c : cases()) {
        const QString name = QString::fromLatin1(c.name);
        const bool hasText = name == u"everything" || name == u"difference" || name == u"vectorsOnNodes";
        if (!hasText && name != u"scheme4" && name != u"displaced2")
            continue;
        const QImage picture = QImage::fromData(render(c, {}, u".png"_s, "400x300"));
        const QImage control = QImage::fromData(render(c, c.control, u".png"_s, "400x300"));
        const PictureTolerance tolerance = hasText ? PictureTolerance{1, 40} : PictureTolerance{};
        EXPECT_TRUE(Golden().MatchesPicture(u"pictures/%1.png"_s.arg(name), picture, tolerance));
        EXPECT_NE(picture, control) << c.name;
    }
}

/// What is left out because it lies out of sight or is covered later, and what is drawn in batches, changes no pixel.
TEST_F(GoldenPictures, ArePixelForPixelThoseOfEveryCall) {
    for (const Case& c : cases()) {
        const QImage rendered = QImage::fromData(render(c, {}, u".png"_s, "400x300"));
        Session session;
        ASSERT_TRUE(session.Open(folder.Path(QString::fromLatin1(c.name) + u".vrf"_s)));
        QHash<QString, int> numbers{{u"--step"_s, 1}, {u"--item"_s, 1}};
        for (qsizetype i = 0; i < c.options.size(); i += 2) {
            const QString &option = c.options[i], &value = c.options[i + 1];
            const qsizetype equals = value.indexOf(u'=');
            if (option == u"--set")
                drawingElements::Set(value.left(equals), value.mid(equals + 1), session.Settings);
            else if (option == u"--mesh")
                session.Settings.Window.Mesh = value == u"on";
            else
                numbers[option] = value.toInt();
        }
        ASSERT_TRUE(session.LoadStep(numbers[u"--step"_s] - 1, numbers[u"--item"_s] - 1));
        for (const int zoom : {0, 5}) {
            mdView::ApplyZoom(zoom, session.View);
            Picture usual(400, 300, 0), every(400, 300);
            EveryCall device(every.Image);
            session.Draw(usual.Device);
            session.Draw(device);
            EXPECT_EQ(usual.Image, every.Image) << c.name << ' ' << zoom;
            EXPECT_TRUE(zoom != 0 || usual.Image == rendered.convertToFormat(QImage::Format_RGB32)) << c.name;
        }
    }
}

} // namespace
