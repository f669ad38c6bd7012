// A model of a few nodes and elements that a test fills by hand or opens, and what a layer draws of it. No tests here.
#pragma once

#include "platform/device/TraceDevice.h"
#include "result/ModelTest.h"
#include "view/scene/legends.h"
#include "view/scene/vectors.h"

/// Drawn at 254 dpi: 10 units a millimetre, 32 units a line of 9-point text, 16 a character.
struct DrawnScene : ModelTest {
    DrawnScene() {
        settings.Style.FontStrings.fill(u"Arial, 9"_s);
        settings.Style.RealFormat = u"0.0"_s;
        model.LineElementsOnly = false;
        window.SetRect(0, 1, 2, 0);
    }
    /// With 9 as its maximum.
    void addItem(int elementType, const QList<float>& values) {
        model.Items.append({u"応力"_s, elementType, 0});
        model.ItemData.append({std::int32_t(values.size()), values, 9, 0});
        ++model.ItemCount;
    }
    void addNode(DevicePoint at, bool active = true) {
        view.NodePoints.push_back(at);
        model.Mesh.Nodes.Active.append(active);
        ++model.Mesh.NodeCount;
    }
    void useItems(int horz, int vert) {
        settings.Vector.ItemSets = {{u"流れ"_s, horz, vert}};
        settings.Vector.ItemSetCount = 1;
        settings.Vector.DefaultItemSet = 0;
    }
    Scene scene() { return {model, settings, view, slideShow}; }
    PlotConverter converter() const { return {window, {0, 0, 1000, 800}, 100, TraceDevice(1000, 800, 254)}; }
    /// The trace of what `draw` draws, without its select calls.
    template<typename Draw>
    static std::string traceOf(Draw draw) {
        TraceDevice device(1000, 800, 254);
        draw(device);
        std::string lines;
        for (const QByteArray& line : device.Trace().split('\n'))
            if (!line.isEmpty() && !line.contains("Pen") && !line.contains("Brush") && !line.startsWith("Font"))
                lines += line.toStdString() + '\n';
        return lines;
    }

    ApplicationSettings settings;
    ViewState view;
    SlideShowRun slideShow;
    PaintContext context;
    PlotRect window;
};
