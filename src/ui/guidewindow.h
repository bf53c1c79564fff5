#pragma once
// The user guide in a window of the program's own, so that Help works without a desktop to hand
// the file to: the guide's markdown rendered, its links to the web opened by the desktop's browser.
#include <QDialog>

class QTextBrowser;

namespace zq::ui {

class MessageBoxes;
class StringTable;

// Strings of the guide window beside its menu entry (1400, "User Guide(&G)").
inline constexpr int kGuideTitleId = 1401;   // "User Guide"
inline constexpr int kGuideMissingId = 1402; // the box when there is no guide to show

class GuideWindow : public QDialog {
    Q_OBJECT
public:
    // The guide at `path` in a new window (not yet shown); null, after a box that says so, when
    // there is no guide or it cannot be read.
    static GuideWindow* open(const QString& path, MessageBoxes& boxes, const StringTable& strings,
                             QWidget* parent);

    QTextBrowser* browser() const { return browser_; }

private:
    GuideWindow(const QString& path, const QString& markdown, const QString& title, QWidget* parent);
    QTextBrowser* browser_;
};

} // namespace zq::ui
