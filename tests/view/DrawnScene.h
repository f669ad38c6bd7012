// A model of a few nodes and elements that a test fills by hand, and what a layer draws of it. No tests here.
#pragma once

#include "platform/TraceDevice.h"
#include "view/legends.h"
#include "view/vectors.h"

#include <gtest/gtest.h>

/// Drawn at 254 dpi: 10 units a millimetre, 32 units a line of 9-point text, 16 a character.
struct DrawnScene : testing::Test {
    DrawnScene() {
        for (QString& font : settings.Style.FontStrings)
            font = u"Arial, 9"_qs;
        settings.Style.RealFormat = u"0.0"_qs;
        model.LineElementsOnly = false;
        window.SetRect(0, 1, 2, 0);
    }
    void addItem(const QString& name, int elementType, const QList<float>& values) {
        model.Items.append({name, elementType, 0});
        ItemValues item{std::int32_t(values.size()), values, 0, 0};
        for (const float value : values) {
            item.MaxValue = value > item.MaxValue ? value : item.MaxValue;
            item.MinValue = value < item.MinValue ? value : item.MinValue;
        }
        model.ItemData.append(item);
        model.ItemCount = std::int32_t(model.Items.size());
    }
    void addNode(DevicePoint at, bool active = true) {
        view.NodePoints.push_back(at);
        model.Mesh.Nodes.Active.append(active);
        ++model.Mesh.NodeCount;
    }
    void addElement(DevicePoint centre, int type, int corners = 3) {
        QList<std::int32_t>& first = model.Mesh.Elements.FirstCorner;
        if (first.isEmpty())
            first.append(0);
        first.append(first.last() + corners);
        model.Mesh.Elements.ElementType.append(type);
        view.ElementCentres.push_back(centre);
        ++model.Mesh.ElementCount;
    }
    Scene scene() { return {model, settings, view}; }
    static PlotConverter converter(const PlotRect& rect) {
        return {rect, {0, 0, 1000, 800}, 100, TraceDevice(1000, 800, 254)};
    }
    /// The trace of what `draw` draws; without its select calls unless `selects`.
    template<typename Draw>
    static std::string traceOf(Draw draw, bool selects = false) {
        TraceDevice device(1000, 800, 254);
        draw(device);
        std::string lines;
        for (const QByteArray& line : device.Trace().split('\n'))
            if (!line.isEmpty() && (selects || !(line.contains("Pen") || line.contains("Brush") || line[0] == 'F')))
                lines += line.toStdString() + '\n';
        return lines;
    }

    ResultModel model;
    ApplicationSettings settings;
    ViewState view;
    PaintContext context;
    PlotRect window;
};
