// Pictures as the companion makes them, against pictures that were looked at once. Each has a control: a setting that
// must change it, so that a comparison that could not fail would show.
#include "BatchTest.h"
#include "Golden.h"
#include "Picture.h"
#include "property/drawingElements.h"
#include "view/scene/Session.h"

namespace {

/// Nine quadrilaterals, some of them split into triangles, and a line element on top; elements vanish in step 2. Items:
/// displacement X and Y and a stress at the nodes, a stress in the quadrilaterals (type 4), one in the triangles (type
/// 3).
VrfBuilder mixedModel() {
    VrfBuilder file;
    file.items = {
        {u"変位X"_s, -1, 1}, {u"変位Y"_s, -1, 2}, {u"応力"_s, -1, 0}, {u"四角形応力"_s, 4, 0}, {u"三角形応力"_s, 3, 0}};
    VrfBuilder::Step step{0, u"初期"_s, {}, {{}, {}, {}, {1, 2, 3, 4, 5, 6}, {7, 8, 9, 10, 11, 12}}};
    for (int node = 1; node <= 16; ++node) {
        const int i = (node - 1) % 4, j = (node - 1) / 4;
        file.nodes.push_back({i + 0.1 * j, j - 0.05 * i * j});
        step.values[0].push_back(0.01 * i * (3 - j));
        step.values[1].push_back(-0.008 * i * i);
        step.values[2].push_back(i * i - 2.5 * j);
        if (i == j && i < 3) {
            file.elements.push_back({node, node + 1, node + 5});
            file.elements.push_back({node, node + 5, node + 4});
        } else if (i < 3 && j < 3) {
            file.elements.push_back({node, node + 1, node + 5, node + 4});
        }
    }
    file.elements.push_back({13, 16});
    for (const auto& element : file.elements)
        step.types.push_back(element.size() > 2 ? qint32(element.size()) : 1);
    file.steps = {step, {0.5, u"撤去"_s, step.types, step.values}};
    for (std::size_t item = 0; item < 3; ++item)
        for (double& value : file.steps[1].values[item])
            value *= 1.5;
    file.steps[1].types[2] = file.steps[1].types[3] = -1;
    file.steps[1].values[3] = {3, 4, 5, 6};
    file.steps[1].values[4] = {8, 9, 10, 11, 12, 13};
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
    QString name;
    VrfBuilder (*model)();
    QString options, control; ///< the control's options must change the picture
};

const QString quiet = u"--set contour/legend=False --set displacement/legend=False --set vector/legend=False "_s;

QList<Case> cases() {
    const QString plain = quiet + u"--set displacement/fid=0 "_s, otherScale = u"--set displacement/scale=50"_s,
                  bare = quiet + u"--mesh off --set contour/values/automatic=False --set contour/values/div=1 "_s,
                  scheme = plain + u"--item 3 --set contour/colors/mid=0x0000ff00 --set contour/values/automatic=False "
                                   "--set contour/values/min=-8 --set contour/values/max=9 --set contour/values/div=5 "
                                   "--set contour/colors/index="_s;
    QList<Case> all = {
        {u"displaced1"_s, mixedModel, bare + u"--set displacement/fid=1 --set displacement/scale=4000"_s, otherScale},
        {u"displaced2"_s, mixedModel, bare + u"--set displacement/fid=2 --set displacement/orgmesh=True"_s, otherScale},
        {u"displaced3"_s, mixedModel, bare + u"--set displacement/fid=3 --step 2"_s, u"--step 1"_s},
        {u"vectorsOnNodes"_s, mixedModel, plain + u"--set vector/items/itemset=u,1,2 --set vector/legend=True"_s,
         u"--set vector/scale=100"_s},
        {u"vectorsOnElements"_s, mixedModel,
         plain + u"--set vector/items/itemset=s,4,4 --set vector/fid=1 --set vector/scale=30"_s,
         u"--set vector/fid=0"_s},
        {u"numbersOnNodes"_s, mixedModel, plain + u"--item 3 --set value/disp=True"_s, u"--item 2"_s},
        {u"numbersOnElements"_s, mixedModel, plain + u"--item 5 --set value/disp=True"_s, u"--item 4"_s},
        {u"vanished"_s, mixedModel, u"--item 3 --step 2"_s, u"--step 1"_s},
        {u"bars"_s, barModel, u"--item 3 --set value/disp=True"_s, u"--mesh off --set value/disp=False"_s},
        {u"constant"_s, constantModel, u"--item 3"_s, u"--item 2"_s},
        {u"difference"_s, mixedModel,
         u"--item 3 --step 2 --set difference/std=1 --set difference/dsp=1 --set difference/cnt=1 "
         "--set difference/val=1 --set value/disp=True"_s,
         u"--set difference/cnt=0"_s},
        {u"everything"_s, mixedModel,
         u"--item 4 --set value/disp=True --set vector/items/itemset=u,1,2 --set displacement/orgmesh=True"_s,
         u"--zoom 2"_s},
    };
    for (const QChar index : u"012345"_s)
        all.append({u"scheme"_s + index, mixedModel, scheme + index, u"--set contour/reverse=True"_s});
    return all;
}

TEST_F(BatchTest, GoldenPictures) {
    for (const Case& c : cases()) {
        path = folder.Write(c.model().Bytes());
        const auto render = [&](const QString& name, const QString& more) {
            const QString line = u"render FILE --size 400x300 "_s + c.options + u' ' + more + u" -o "_s;
            EXPECT_EQ(run(line + folder.Path(name)), 0) << errors.constData();
            return fileBytes(name);
        };
        const QByteArray trace = render(u"o.trace"_s, {});
        EXPECT_TRUE(Golden().MatchesText(u"traces/%1.trace"_s.arg(c.name), trace));
        EXPECT_NE(render(u"o.trace"_s, c.control), trace) << c.name.toStdString();
        const bool hasText = QStringList{u"everything"_s, u"difference"_s, u"vectorsOnNodes"_s}.contains(c.name);
        if (!hasText && c.name != u"scheme4" && c.name != u"displaced2")
            continue;
        const QImage picture = QImage::fromData(render(u"o.png"_s, {}));
        EXPECT_TRUE(Golden().MatchesPicture(u"pictures/%1.png"_s.arg(c.name), picture,
                                            hasText ? PictureTolerance{1, 40} : PictureTolerance{}));
    }
}

/// What is left out because it lies out of sight or is covered later, and what is drawn in batches, changes no pixel.
TEST_F(BatchTest, PicturesArePixelForPixelThoseOfEveryCall) {
    for (const Case& c : cases()) {
        Session session;
        ASSERT_TRUE(session.Open(folder.Write(c.model().Bytes())));
        QHash<QString, int> numbers{{u"--step"_s, 1}, {u"--item"_s, 1}};
        const QStringList words = c.options.split(u' ', Qt::SkipEmptyParts);
        for (qsizetype i = 0; i + 1 < words.size(); i += 2) {
            const QString& value = words[i + 1];
            if (words[i] == u"--set")
                drawingElements::Set(value.section(u'=', 0, 0), value.section(u'=', 1), session.Settings);
            else if (words[i] == u"--mesh")
                session.Settings.Window.Mesh = value == u"on";
            else
                numbers[words[i]] = value.toInt();
        }
        ASSERT_TRUE(session.LoadStep(numbers[u"--step"_s] - 1, numbers[u"--item"_s] - 1));
        for (const int zoom : {0, 5}) {
            mdView::ApplyZoom(zoom, session.View);
            Picture usual(400, 300, 0), every(400, 300);
            EveryCall device(every.Image);
            session.Draw(usual.Device);
            session.Draw(device);
            EXPECT_EQ(usual.Image, every.Image) << c.name.toStdString() << ' ' << zoom;
        }
    }
}

} // namespace
