// The demonstration clone file under examples/ is generated from the data set here; run with
// ZQ_WRITE_DEMO=1 to write it again after changing the data set.
#include "files/clonefile.h"
#include "sampledata.h"

#include <QFile>
#include <gtest/gtest.h>

using namespace zq;

TEST(DemoFile, MatchesTheDataSetAndOpens) {
    const QString path = QStringLiteral(ZQ_EXAMPLES_DIR "/demo.318");
    model::Document document;
    testdata::FillDemoData(document);
    if (qEnvironmentVariableIntValue("ZQ_WRITE_DEMO") == 1) {
        ASSERT_TRUE(files::SaveCloneFile(document, path).ok());
    }

    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), files::SerializeCloneFile(document));

    model::Document opened;
    ASSERT_TRUE(files::LoadCloneFile(opened, path).ok());
    EXPECT_EQ(opened.memory.text(2, model::ColName), QStringLiteral("W1AW"));
    EXPECT_EQ(opened.dialTexts[0], QStringLiteral("5551234"));
    EXPECT_EQ(opened.settings, document.settings);
}
