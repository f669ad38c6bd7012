// The window from a key to the picture of the next step on the screen, beside what it can't do without: the step read
// and painted in that size. Takes the display that QT_QPA_PLATFORM names; `bench` itself runs it without one.
#include "QuadMesh.h"
#include "Table.h"
#include "app/mdApplication.h"
#include "mainwin/frmMain.h"
#include "mainwin/globals.h"
#include "platform/raster/RasterDevice.h"
#include "platform/widgets/PictureBox.h"

#include <QApplication>
#include <QKeyEvent>
#include <QTemporaryDir>

namespace {

constexpr int steps = 10;

/// Tells when the box has been shown anew.
class Shown : public QObject {
public:
    explicit Shown(QWidget& widget) : box(widget) { box.installEventFilter(this); }
    /// Until it is, on the display as well.
    void Wait() {
        for (isShown = false; !isShown;)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        QGuiApplication::sync();
    }

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        isShown = isShown || event->type() == QEvent::Paint;
        return false;
    }

private:
    QWidget& box;
    bool isShown = false;
};

void stepByKey(benchmark::State& state) {
    const int elements = int(state.range(0));
    const QString path = QuadMesh::File(elements, steps);
    frmMain window;
    window.FirstStep(path);
    auto& box = *window.findChild<PictureBox*>(u"picScreen"_s);
    constexpr QSize picture(1280, 1024);
    window.resize(window.size() + picture - box.size());
    window.show();
    Shown shown(box);
    shown.Wait();
    QCoreApplication::processEvents();
    Session plain;
    plain.Open(path);
    QImage sheet(box.Image().size(), QImage::Format_RGB32);
    const auto stepOn = [&] {
        // Up from the last step to the first one is a way as well.
        const bool isLast = mdApplication::Model.CurrentStep == steps - 1;
        const auto held = isLast ? Qt::ControlModifier : Qt::NoModifier;
        QKeyEvent key(QEvent::KeyPress, isLast ? Qt::Key_Up : Qt::Key_Down, held);
        QCoreApplication::sendEvent(&box, &key);
        shown.Wait();
    };
    int step = 0;
    const auto readAndPaint = [&] {
        plain.ExchangeStep(step = (step + 1) % steps, 0);
        sheet.fill(Qt::white);
        RasterDevice device(sheet, box.DotsPerInch());
        plain.Draw(device);
    };
    // The first ones load fonts.
    stepOn();
    readAndPaint();
    Table::Measure(state, elements, {stepOn, readAndPaint, {}});
    state.SetLabel(elements == 100000 ? "25 ms" : "");
}

} // namespace

BENCHMARK(stepByKey)->Arg(100)->Arg(10000)->Arg(100000)->UseManualTime();

int main(int argc, char** argv) {
    const QTemporaryDir settings;
    qputenv("XDG_CONFIG_HOME", settings.path().toUtf8());
    const QApplication application(argc, argv);
    return Table::Main(argc, argv);
}
