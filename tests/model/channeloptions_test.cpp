#include "model/channeloptions.h"

#include <gtest/gtest.h>

#include <QStringList>

using namespace zq::model;

// Each group's buttons in order, as "caption=code", and the codes that belong to no button.
TEST(ChannelOptions, EveryOptionRoundTripsThroughItsCodeAndCaption) {
    const struct {
        const OptionTable& table;
        const char* options;
    } groups[] = {
        {ToneModes(), "None=0 Tone=1 TSQ=3 DCS=12"},
        {Shifts(), "None=0 -Shift=1 +Shift=2"},
        {Powers(), "Low=0 Mid=1 High=2"},
        {BatterySaves(), "Off=0 On1=1 On2=2"},
    };
    for (const auto& group : groups) {
        SCOPED_TRACE(group.options);
        QStringList listed;
        for (int i = 0; i < group.table.count(); ++i) {
            const Cell cell = group.table.cell(i);
            listed << QStringLiteral("%1=%2").arg(cell.text).arg(cell.number);
            EXPECT_EQ(group.table.indexOfCode(cell.number), i);
            EXPECT_EQ(group.table.indexOfCaption(cell.text), i);
        }
        EXPECT_EQ(listed.join(QLatin1Char(' ')), QLatin1String(group.options));
        for (const double stray : {-1.0, 2.5, 4.0, 13.0})
            EXPECT_EQ(group.table.indexOfCode(stray), -1) << stray;
        EXPECT_EQ(group.table.indexOfCaption(QStringLiteral("none")), -1); // captions match exactly
    }
}
