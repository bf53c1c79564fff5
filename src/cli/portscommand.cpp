#include "commands.h"
#include "files/preferences.h"
#include "link/portnumbers.h"
#include "texttable.h"

#include <QFileInfo>

namespace zq::cli {

int portsCommand(const QStringList& arguments, CliContext& context) {
    QCommandLineParser parser;
    if (const auto status = ParseVerbArguments(parser, arguments, *context.command, 0)) return *status;

    const QList<link::SerialPortDetails> listed = link::ListedPorts();
    const QList<link::NumberedPort> numbered = link::NumberPorts(listed);
    const files::PortSetting setting = files::LoadPortSetting();
    const files::RememberedAdapter adapter = files::LoadRememberedAdapter();

    TextTable table({QString(), QStringLiteral("Port"), QStringLiteral("Device"), QStringLiteral("USB"),
                     QStringLiteral("Adapter"), QStringLiteral("Status"), QStringLiteral("Stable name")});
    for (const link::NumberedPort& entry : numbered) {
        const bool hasPort = !entry.port.device.isEmpty();
        table.addRow({entry.number == setting.port ? QStringLiteral("*") : QString(),
                      link::PortCaption(entry.number), hasPort ? entry.port.device : QStringLiteral("-"),
                      entry.port.usbIds(), entry.port.description,
                      hasPort ? link::AccessSummary(entry.probe) : QString(),
                      QFileInfo(entry.port.stableId).fileName()});
    }
    for (const QString& line : table.lines())
        PrintOut(line);

    PrintOut(QString());
    if (listed.isEmpty()) PrintOut(QStringLiteral("The system lists no serial port."));
    if (listed.size() > link::kLastPortNumber) {
        QStringList beyond;
        for (qsizetype i = link::kLastPortNumber; i < listed.size(); ++i)
            beyond << listed.at(i).device;
        PrintOut(QStringLiteral("Beyond COM 14 (give the device with --port): %1")
                     .arg(beyond.join(QStringLiteral(", "))));
    }
    const link::ResolvedPort resolved =
        link::ResolvePortNumber(setting.port, adapter.port, adapter.identity, link::ListedPortDevices());
    const QString portFile = files::PortFilePath();
    QString chosen = QStringLiteral("* Without --port: %1").arg(link::PortCaption(setting.port));
    if (!setting.result.ok())
        chosen += QStringLiteral(" (%1)").arg(setting.result.detail);
    else if (QFileInfo::exists(portFile))
        chosen += QStringLiteral(" from the port file %1").arg(portFile);
    else
        chosen += QStringLiteral(" (no port file yet at %1)").arg(portFile);
    if (resolved.followed)
        chosen += QStringLiteral(", found by its adapter's stable name at %1").arg(resolved.device);
    PrintOut(chosen);
    for (const link::NumberedPort& entry : numbered)
        if (entry.probe.access == link::PortAccess::NoPermission ||
            entry.probe.access == link::PortAccess::Busy)
            PrintOut(QStringLiteral("%1: %2").arg(link::PortCaption(entry.number),
                                                  link::AccessAdvice(entry.probe)));
    return ExitOk;
}

} // namespace zq::cli
