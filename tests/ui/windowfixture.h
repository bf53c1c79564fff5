#pragma once
// The program with scripted boxes and dialogs, a port file in a temporary folder and no pause.
#include "files/preferences.h"
#include "ui/channelgridview.h"
#include "ui/filedialogs.h"
#include "ui/functionsettingspage.h"
#include "ui/memorypage.h"
#include "ui/messageboxes.h"
#include "ui/program.h"
#include "ui/stringtable.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace zq::ui::test {

// Each opening as {memory grid?, row index}.
class RecordingEditor : public ChannelEditor {
public:
    void openMemoryChannel(int editIndex) override { opened.append({true, editIndex}); }
    void openSpecialRow(int editIndex) override { opened.append({false, editIndex}); }
    QList<std::pair<bool, int>> opened;
};

inline void WriteFile(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

inline QByteArray ReadFile(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

class WindowFixture : public ::testing::Test {
protected:
    explicit WindowFixture(Language language = Language::English)
        : strings(language), program(std::make_unique<Program>(boxes, dialogs, strings)),
          window(&program->window()), fatalSpy(program.get(), &Program::fatalError) {
        window->setChannelEditor(&editor);
    }
    // A home of the test's own, so that recovery files and other per-user data stay in it.
    void SetUp() override {
        ASSERT_TRUE(temp.isValid());
        ASSERT_TRUE(QDir(temp.path()).mkdir(QStringLiteral("home")));
        qputenv("HOME", QFile::encodeName(temp.filePath(QStringLiteral("home"))));
        files::SaveRememberedAdapter({}); // no adapter left over from another test
    }
    void TearDown() override {
        doc().setDataChanged(false); // no prompt on the way out
        qputenv("HOME", home);
    }

    model::Result load(const QString& file = QString()) {
        return program->load(LoadOptions{file, portFile(), 0});
    }
    QString portFile() const { return temp.filePath(QStringLiteral("ZQ-318.ini")); }
    QString path(const char* name) const { return temp.filePath(QLatin1String(name)); }
    model::Document& doc() { return program->document(); }
    MemoryPage& memoryPage() { return window->memoryPage(); }
    ChannelGridView* specialGrid() { return window->functionPage().specialGrid(); }
    // A copy of the demonstration file, with another header line and a broken end line if asked.
    QString demoCopy(const char* name, const QString& header = QString(), bool breakEnd = false) {
        QByteArray demo = ReadFile(QStringLiteral(ZQ_EXAMPLES_DIR "/demo.318"));
        EXPECT_FALSE(demo.isEmpty());
        if (!header.isEmpty()) demo.replace(0, 32, header.toLatin1());
        if (breakEnd) demo.replace(demo.size() - 34, 32, QByteArray(32, 'X'));
        WriteFile(path(name), demo);
        return path(name);
    }
    template <typename T> T* find(const char* name) {
        T* found = window->findChild<T*>(QLatin1String(name));
        EXPECT_NE(found, nullptr) << name;
        return found;
    }
    // Grid rows and columns count from 1, as the window numbers them.
    QString memoryCell(int gridRow, int gridColumn) {
        return memoryPage().grid()->model()->index(gridRow - 1, gridColumn - 1).data().toString();
    }

    QTemporaryDir temp;
    const QByteArray home = qgetenv("HOME");
    StringTable strings;
    ScriptedMessageBoxes boxes;
    ScriptedFileDialogs dialogs;
    RecordingEditor editor;
    std::unique_ptr<Program> program;
    MainWindow* window;
    QSignalSpy fatalSpy;
};

} // namespace zq::ui::test
