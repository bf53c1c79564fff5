#include "model/document.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

using namespace zq::model;

TEST(Document, SignalsOnlyOnChangeAndSelectsNoUnknownVariant) {
    Document document;
    QSignalSpy changed(&document, &Document::dataChangedFlagChanged);
    document.setDataChanged(true);
    document.setDataChanged(true);
    EXPECT_EQ(changed.count(), 1);
    QSignalSpy variant(&document, &Document::modelVariantChanged);
    document.setModelVariant(7); // no such option: nothing selected
    EXPECT_EQ(document.ModelVariant(), -1);
    EXPECT_EQ(variant.count(), 1);
}
