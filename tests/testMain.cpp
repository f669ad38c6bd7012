// Entry of every test program: a Qt application without display and a configuration folder that is thrown away.
#ifdef QT_WIDGETS_LIB
#include <QApplication>
using Application = QApplication;
#else
#include <QGuiApplication>
using Application = QGuiApplication;
#endif
#include <QTemporaryDir>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    QTemporaryDir configuration;
    qputenv("XDG_CONFIG_HOME", configuration.path().toUtf8());
    qputenv("QT_QPA_PLATFORM", "offscreen");
    Application application(argc, argv);
    return RUN_ALL_TESTS();
}
