#include "tracefolder.h"

#include "files/userdata.h"
#include "messageboxes.h"
#include "model/tables.h"
#include "stringtable.h"

#include <QDesktopServices>
#include <QDir>

namespace zq::ui {

UrlOpener DesktopUrlOpener() {
    return [](const QUrl& url) { return QDesktopServices::openUrl(url); };
}

void OpenTraceFolder(MessageBoxes& boxes, const UrlOpener& open, const StringTable& strings) {
    QString why;
    const QString folder = files::UserDataFolder(QStringLiteral("traces"), &why);
    if (folder.isEmpty()) {
        boxes.show(ErrorBox(QStringLiteral("File Open Error\r\n") + why));
        return;
    }
    if (open(QUrl::fromLocalFile(folder))) return;
    boxes.show({strings.string(text::kTraceFolderIs).arg(QDir::toNativeSeparators(folder)), model::AppTitle(),
                MessageButtons::Ok, MessageIcon::Information, MessageAnswer::Ok});
}

} // namespace zq::ui
