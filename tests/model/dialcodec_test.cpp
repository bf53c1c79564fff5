#include "model/dialcodec.h"

#include <gtest/gtest.h>

using namespace zq::model;

TEST(DialCodec, Records) {
    EXPECT_EQ(MakeDialData(QStringLiteral("12bE*-#")), QStringLiteral("31323B3E403F00000000000000000000"));
    EXPECT_EQ(MakeDialData(QString(20, QLatin1Char('1'))).size(), 40); // never shortened
    EXPECT_EQ(UpDateDialData(QStringLiteral("31FF41zz3A3B3C3D3E3F40")), QStringLiteral("1ABCD*#-"));
    EXPECT_EQ(UpDateDialData(QStringLiteral("31")), QStringLiteral("1"));
}
