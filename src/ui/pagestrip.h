#pragma once
// The tab strip over the window's frames: the two settings pages, the memory page and the service
// panel. The frames lie on top of each other; only the one in front is enabled.
#include <QTabWidget>
#include <array>

namespace zq::ui {

class PageStrip : public QTabWidget {
    Q_OBJECT
public:
    // Tab indexes of the pages; the service panel's tab comes and goes.
    enum Page { Settings1 = 0, Settings2 = 1, Memory = 2, Service = 3 };

    // Puts each page into its frame (Frame1_0..Frame1_3).
    explicit PageStrip(const std::array<QWidget*, 4>& pages, QWidget* parent = nullptr);

    // Brings `page` to the front and enables its frame alone.
    void selectPage(int page);
    // The service panel as a page of its own (brought to the front), or hidden again.
    void showServicePanel(bool show);
    bool servicePanelShown() const { return indexOf(frames_[Service]) >= 0; }

Q_SIGNALS:
    // A page came to the front, by a click or by the program.
    void pageSwitched(int page);

private:
    void enableFrontFrame();

    std::array<QWidget*, 4> frames_{};
};

} // namespace zq::ui
