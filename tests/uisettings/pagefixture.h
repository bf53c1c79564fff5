#pragma once
// Both settings pages over one document, shown in one window as the main window shows them.
#include "model/document.h"
#include "ui/settingspages.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QTest>

#include <gtest/gtest.h>
#include <memory>
#include <ostream>

inline void PrintTo(const QString& text, std::ostream* os) {
    *os << '"' << text.toStdString() << '"';
}

class PageFixture {
public:
    PageFixture() {
        host = std::make_unique<QWidget>();
        auto* row = new QHBoxLayout(host.get());
        page1 = new zq::ui::SettingsPage1(doc, host.get());
        page2 = new zq::ui::SettingsPage2(doc, host.get());
        row->addWidget(page1);
        row->addWidget(page2);
        host->show();
        host->activateWindow();
        (void)QTest::qWaitForWindowExposed(host.get());
    }

    template <typename T = QWidget> T* find(const QString& name) const {
        T* widget = host->findChild<T*>(name);
        EXPECT_NE(widget, nullptr) << name.toStdString();
        return widget;
    }

    // The user picks list entry `index` with the arrow keys, as from the open list.
    void choose(const QString& combo, int index) {
        auto* box = find<QComboBox>(combo);
        box->setFocus();
        while (box->currentIndex() > index)
            QTest::keyClick(box, Qt::Key_Up);
        while (box->currentIndex() < index)
            QTest::keyClick(box, Qt::Key_Down);
    }
    // The user replaces the text of a combo box by typing.
    void type(const QString& combo, const QString& text) {
        auto* box = find<QComboBox>(combo);
        box->setFocus();
        box->lineEdit()->selectAll();
        QTest::keyClick(box->lineEdit(), Qt::Key_Backspace);
        QTest::keyClicks(box->lineEdit(), text);
    }
    void click(const QString& name) {
        auto* button = find<QAbstractButton>(name);
        QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(6, button->height() / 2));
    }

    zq::model::Document doc;
    std::unique_ptr<QWidget> host;
    zq::ui::SettingsPage1* page1 = nullptr;
    zq::ui::SettingsPage2* page2 = nullptr;
};
