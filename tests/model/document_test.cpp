#include "model/document.h"
#include "model/tables.h"

#include <gtest/gtest.h>

#include <QSignalSpy>
#include <functional>

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

// Every change announces what it touched; only an edit of the user's marks the document changed.
TEST(Document, ChangesAnnounceTheirRowsAndOnlyEditsMarkTheData) {
    using Mark = Document::Mark;
    const struct {
        const char* what;
        std::function<void(Document&, Mark)> change;
        const char* announced;
    } cases[] = {
        {"memory",
         [](Document& d, Mark m) {
             d.changeMemory(
                 4, 9, [](MemoryTable& t) { t.setChannelInUse(5, true); }, m);
         },
         "memory 4-9"},
        {"special",
         [](Document& d, Mark m) {
             d.changeSpecial(
                 1, 2, [](SpecialTable& t) { t.setText(1, 0, "x"); }, m);
         },
         "special 1-2"},
        {"settings", [](Document& d, Mark m) { d.changeSettings([](RadioSettings& s) { s.volume = 5; }, m); },
         "settings"},
        {"dial", [](Document& d, Mark m) { d.setDialText(3, QStringLiteral("12#"), m); }, "dial"},
    };
    for (const auto& c : cases) {
        for (const Mark mark : {Mark::Quiet, Mark::Edit}) {
            SCOPED_TRACE(std::string(c.what) + (mark == Mark::Edit ? " edit" : " quiet"));
            Document document;
            const Contents before = document.contents();
            QStringList announced;
            QObject::connect(&document, &Document::memoryRowsChanged, [&](int a, int b) {
                announced << QStringLiteral("memory %1-%2").arg(a).arg(b);
            });
            QObject::connect(&document, &Document::specialRowsChanged, [&](int a, int b) {
                announced << QStringLiteral("special %1-%2").arg(a).arg(b);
            });
            QObject::connect(&document, &Document::settingsChanged,
                             [&] { announced << QStringLiteral("settings"); });
            QObject::connect(&document, &Document::dialTextsChanged,
                             [&] { announced << QStringLiteral("dial"); });
            c.change(document, mark);
            EXPECT_EQ(announced, QStringList{QLatin1String(c.announced)});
            EXPECT_FALSE(document.contents() == before);
            EXPECT_EQ(document.DataChanged(), mark == Mark::Edit);
        }
    }
}

TEST(Document, ChoosingAModelMarksTheDataAndRedrawsTheMemoryGrid) {
    Document document;
    QSignalSpy rows(&document, &Document::memoryRowsChanged);
    document.chooseModelVariant(VariantE);
    EXPECT_EQ(document.ModelVariant(), VariantE);
    EXPECT_TRUE(document.DataChanged());
    ASSERT_EQ(rows.count(), 1);
    EXPECT_EQ(rows.at(0), (QVariantList{0, kChannelCount - 1}));
}
