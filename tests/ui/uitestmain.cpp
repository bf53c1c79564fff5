// The widget tests need one application object; offscreen unless told otherwise.
#include <QApplication>
#include <QStandardPaths>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QStandardPaths::setTestModeEnabled(true); // the geometry goes to a test settings store
    QApplication app(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("zq318-ui-tests"));
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
