#include "model/document.h"
#include "model/tables.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

using namespace zq::model;

TEST(Document, StartupData) {
    Document document;
    EXPECT_EQ(document.ModelVariant(), VariantT);
    EXPECT_FALSE(document.CloneCodeA());
    EXPECT_FALSE(document.DataChanged());
    EXPECT_TRUE(document.CurrentFilePath().isEmpty());
    EXPECT_EQ(document.windowCaption(), AppTitle());
    EXPECT_EQ(document.settingsBlock, SettingsBlock{});
    EXPECT_EQ(document.settings.volume, 0);
    EXPECT_EQ(document.memory.text(0, ColFrequency), QStringLiteral("145.0000"));
    EXPECT_FALSE(document.memory.ChannelInUse(0));
    EXPECT_EQ(document.special.text(kVfoRow, ColStep), QStringLiteral("5KHz"));
}

TEST(Document, SignalsOnlyOnChange) {
    Document document;
    QSignalSpy changed(&document, &Document::dataChangedFlagChanged);
    document.setDataChanged(true);
    document.setDataChanged(true);
    document.setDataChanged(false);
    EXPECT_EQ(changed.count(), 2);
    QSignalSpy variant(&document, &Document::modelVariantChanged);
    document.setModelVariant(7); // no such option: nothing selected
    EXPECT_EQ(document.ModelVariant(), -1);
    EXPECT_EQ(variant.count(), 1);
}
