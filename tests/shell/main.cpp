#include <QApplication>
#include <QTemporaryDir>

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    // A run by hand needs no display either.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    // Qt's dialogs remember things of their own, which aren't the user's.
    const QTemporaryDir settings;
    qputenv("XDG_CONFIG_HOME", settings.path().toLocal8Bit());
    const QApplication application(argc, argv);
    QApplication::setStyle(QStringLiteral("Fusion"));
    // As in the program: windows in the tray don't end it.
    QApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
