#include "pagestrip.h"

#include <QVBoxLayout>

namespace zq::ui {

PageStrip::PageStrip(const std::array<QWidget*, 4>& pages, QWidget* parent) : QTabWidget(parent) {
    setObjectName(QStringLiteral("TabStrip1"));
    const std::array<const char*, 3> captions = {"Settings 1", "Settings2", "Memorys"};
    for (int i = 0; i < int(frames_.size()); ++i) {
        frames_[i] = new QWidget(this);
        frames_[i]->setObjectName(QStringLiteral("Frame1_%1").arg(i));
        frames_[i]->setProperty("index", i);
        auto* layout = new QVBoxLayout(frames_[i]);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(pages[i]);
        if (i < Service)
            addTab(frames_[i], QLatin1String(captions[i]));
        else
            frames_[i]->hide();
    }
    connect(this, &QTabWidget::currentChanged, this, [this](int page) {
        if (page < 0) return;
        enableFrontFrame();
        Q_EMIT pageSwitched(page);
    });
}

void PageStrip::enableFrontFrame() {
    for (QWidget* frame : frames_)
        frame->setEnabled(indexOf(frame) == currentIndex());
}

void PageStrip::selectPage(int page) {
    if (page == currentIndex()) {
        enableFrontFrame();
        Q_EMIT pageSwitched(page);
    } else {
        setCurrentIndex(page);
    }
}

void PageStrip::showServicePanel(bool show) {
    QWidget* frame = frames_[Service];
    const int index = indexOf(frame);
    if (show && index < 0) {
        addTab(frame, QStringLiteral("Service"));
        frame->setEnabled(true);
        setCurrentWidget(frame);
    } else if (!show && index >= 0) {
        removeTab(index);
        frame->hide();
    }
}

} // namespace zq::ui
