#include "guidewindow.h"

#include "messageboxes.h"
#include "model/tables.h"
#include "stringtable.h"

#include <QDialogButtonBox>
#include <QFile>
#include <QFileInfo>
#include <QPushButton>
#include <QScreen>
#include <QTextBrowser>
#include <QVBoxLayout>

namespace zq::ui {

GuideWindow* GuideWindow::open(const QString& path, MessageBoxes& boxes, const StringTable& strings,
                               QWidget* parent) {
    QFile file(path);
    if (path.isEmpty() || !file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        const QString why = path.isEmpty()
                                ? QStringLiteral("guide.md is neither installed nor in the sources")
                                : QStringLiteral("%1: %2").arg(path, file.errorString());
        MessageRequest box{
            strings.text(kGuideMissingId).value_or(QStringLiteral("The user guide cannot be shown.")),
            model::AppTitle(), MessageButtons::Ok, MessageIcon::Information, MessageAnswer::Ok};
        box.detail = why;
        boxes.show(box);
        return nullptr;
    }
    const QString markdown = QString::fromUtf8(file.readAll());
    return new GuideWindow(path, markdown, strings.text(kGuideTitleId).value_or(QStringLiteral("User Guide")),
                           parent);
}

GuideWindow::GuideWindow(const QString& path, const QString& markdown, const QString& title, QWidget* parent)
    : QDialog(parent) {
    setObjectName(QStringLiteral("frmGuide"));
    setWindowTitle(title + QStringLiteral(" - ") + model::AppTitle());
    // Beside the main window, not in front of it: the guide stays open while the user works.
    setModal(false);

    browser_ = new QTextBrowser(this);
    browser_->setObjectName(QStringLiteral("txtGuide"));
    browser_->setOpenExternalLinks(true);
    browser_->setSearchPaths({QFileInfo(path).absolutePath()});
    browser_->setMarkdown(markdown);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    buttons->button(QDialogButtonBox::Close)->setObjectName(QStringLiteral("cmdClose"));
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::close);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(browser_);
    layout->addWidget(buttons);

    // About 90 letters wide and 40 lines high at the user's font, within the screen.
    const QFontMetrics metrics(browser_->font());
    QSize size(metrics.averageCharWidth() * 90, metrics.lineSpacing() * 40);
    if (QScreen* shown = screen()) size = size.boundedTo(shown->availableSize() * 9 / 10);
    resize(size);
}

} // namespace zq::ui
