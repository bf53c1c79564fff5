#pragma once
// A main window with scripted boxes and dialogs, a port file in a temporary folder and no pause.
#include "ui/filedialogs.h"
#include "ui/mainwindow.h"
#include "ui/messageboxes.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTableView>
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
        : strings(language), window(std::make_unique<MainWindow>(boxes, dialogs, strings)),
          fatalSpy(window.get(), &MainWindow::fatalError) {
        window->setChannelEditor(&editor);
    }
    void SetUp() override { ASSERT_TRUE(temp.isValid()); }
    void TearDown() override { window->document().setDataChanged(false); } // no prompt on the way out

    model::Result load(const QString& file = QString()) {
        return window->load(LoadOptions{file, portFile(), 0});
    }
    QString portFile() const { return temp.filePath(QStringLiteral("ZQ-318.ini")); }
    QString path(const char* name) const { return temp.filePath(QLatin1String(name)); }
    model::Document& doc() { return window->document(); }
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
        return window->memoryGrid()->model()->index(gridRow - 1, gridColumn - 1).data().toString();
    }

    QTemporaryDir temp;
    StringTable strings;
    ScriptedMessageBoxes boxes;
    ScriptedFileDialogs dialogs;
    RecordingEditor editor;
    std::unique_ptr<MainWindow> window;
    QSignalSpy fatalSpy;
};

} // namespace zq::ui::test
