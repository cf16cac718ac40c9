#include <QApplication>
#include <QTemporaryDir>

#include <gmock/gmock.h>

/// Runs the tests with an application that touches neither the user's display nor the user's
/// settings.
int main(int argc, char** argv) {
    testing::InitGoogleMock(&argc, argv);
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QTemporaryDir home;
    for (const char* place : {"XDG_CONFIG_HOME", "XDG_RUNTIME_DIR"})
        qputenv(place, home.path().toLocal8Bit());
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
