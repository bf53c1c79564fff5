#include "commands.h"
#include "files/backups.h"
#include "link/writeguard.h"
#include "texttable.h"

namespace zq::cli {

int backupsCommand(const QStringList& arguments, CliContext& context) {
    QCommandLineParser parser;
    if (const auto status = ParseVerbArguments(parser, arguments, *context.command, 0)) return *status;

    QString why;
    const QList<files::BackupEntry> backups = files::ListBackups(&why);
    if (!why.isEmpty() && backups.isEmpty())
        return Report(model::Result::fail(model::Outcome::FileOpenError, why));
    if (backups.isEmpty()) {
        PrintOut(QStringLiteral("No backups"));
        return ExitOk;
    }
    TextTable table({QStringLiteral("Date"), QStringLiteral("Operation"), QStringLiteral("Size"),
                     QStringLiteral("Model"), QStringLiteral("Channels"), QStringLiteral("File")});
    for (const files::BackupEntry& backup : backups)
        table.addRow({backup.when.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")), backup.operation,
                      QString::number(backup.size),
                      backup.valid ? link::ModelText(backup.variant, backup.cloneCodeA)
                                   : QStringLiteral("(not a clone file)"),
                      backup.valid ? QString::number(backup.channels) : QString(), backup.path});
    for (const QString& line : table.lines())
        PrintOut(line);
    return ExitOk;
}

} // namespace zq::cli
