// zq318-utility: the desktop clone utility.
#include "files/userdata.h"
#include "model/tables.h"
#include "ui/filedialogs.h"
#include "ui/messageboxes.h"
#include "ui/program.h"
#include "ui/screenshots.h"
#include "ui/stringtable.h"
#include "ui/terminationsignals.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QIcon>
#include <QLoggingCategory>
#include <QTimer>

#ifdef Q_OS_WIN
#include <windows.h>
#endif

Q_LOGGING_CATEGORY(lcStartup, "zq318.ui.startup", QtInfoMsg)

namespace {

// The command line after the program name, exactly as Windows hands it over.
QString rawWindowsTail() {
#ifdef Q_OS_WIN
    const QString line = QString::fromWCharArray(GetCommandLineW());
    int i = 0;
    if (line.startsWith(QLatin1Char('"'))) {
        i = line.indexOf(QLatin1Char('"'), 1);
        i = i < 0 ? line.size() : i + 1;
    } else {
        while (i < line.size() && !line.at(i).isSpace())
            ++i;
    }
    while (i < line.size() && line.at(i).isSpace())
        ++i;
    return line.mid(i);
#else
    return QString();
#endif
}

} // namespace

int main(int argc, char* argv[]) {
    QElapsedTimer sinceStart;
    sinceStart.start();
    QApplication app(argc, argv);
    zq::files::SetProgramIdentity();
    QApplication::setApplicationDisplayName(zq::model::AppTitle());
    QApplication::setApplicationVersion(QStringLiteral(ZQ_VERSION));
    // The installed menu entry and icon, so that the desktop shows the window under them.
    QApplication::setDesktopFileName(QStringLiteral("com.korvex.zq318utility"));
    QApplication::setWindowIcon(QIcon::fromTheme(QStringLiteral("zq318-utility")));

    const zq::ui::ProgramOptions options =
        zq::ui::ParseProgramArguments(QApplication::arguments(), rawWindowsTail());
    if (!options.ok) return options.exitStatus;

    const zq::ui::StringTable strings = zq::ui::StringTable::ForUser();
    zq::ui::QtMessageBoxes boxes;
    zq::ui::QtFileDialogs dialogs;
    zq::ui::Program program(boxes, dialogs, strings);
    boxes.setParent(&program.window());
    dialogs.setParent(&program.window());
    QObject::connect(&program, &zq::ui::Program::fatalError, &app,
                     [](int status) { QCoreApplication::exit(status); });
    zq::ui::TerminationSignals endSignals;
    QObject::connect(&endSignals, &zq::ui::TerminationSignals::arrived, &program,
                     &zq::ui::Program::endBySignal);

    const zq::model::Result started = program.start(options, zq::ui::LoadOptions{});
    if (started.outcome == zq::model::Outcome::Fatal) return 1;
    // A signal during the start-up: its event loops have all been told to end already.
    if (program.ended()) return program.exitStatus();
    qCDebug(lcStartup) << "window shown after" << sinceStart.elapsed() << "ms";

    if (!options.screenshotDir.isEmpty()) {
        QTimer::singleShot(300, &app, [&program, &options] {
            zq::ui::SaveScreenshots(program.window(), options.screenshotDir);
            program.document().setDataChanged(false);
            program.window().close();
        });
    }
    return app.exec();
}
