// The link waits in nested event loops, which need an application object.
#include <QCoreApplication>
#include <gtest/gtest.h>

int main(int argc, char* argv[]) {
    QCoreApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
