#pragma once
// Help > Open Trace Folder: the per-user folder where every transfer leaves its serial trace,
// made if it is not there yet and shown by the desktop's file manager.
#include <QUrl>
#include <functional>

namespace zq::ui {

class MessageBoxes;
class StringTable;

// Shows a folder: QDesktopServices::openUrl, unless a test puts something else in its place.
using UrlOpener = std::function<bool(const QUrl&)>;
UrlOpener DesktopUrlOpener();

// A folder that cannot be made is told in an error box; one the desktop cannot show is named in
// a box, so that the user can find it.
void OpenTraceFolder(MessageBoxes& boxes, const UrlOpener& open, const StringTable& strings);

} // namespace zq::ui
