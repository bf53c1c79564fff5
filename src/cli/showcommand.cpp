#include "commands.h"
#include "files/csvexchange.h"
#include "texttable.h"

namespace zq::cli {

namespace {
// The grids' column headings; the row-heading column has none.
QStringList gridHeadings(bool withName) {
    QStringList headings{QString(),
                         QStringLiteral("Frequency"),
                         QStringLiteral("Step"),
                         QStringLiteral("Tone"),
                         QStringLiteral("TxTone"),
                         QStringLiteral("RxTone"),
                         QStringLiteral("DCS"),
                         QStringLiteral("Shift"),
                         QStringLiteral("ShiftFreq."),
                         QStringLiteral("PWR"),
                         QStringLiteral("------"),
                         QStringLiteral("BSV"),
                         QStringLiteral("Clock"),
                         QStringLiteral("BCLO")};
    if (withName) headings.append(QStringLiteral("Name"));
    return headings;
}
} // namespace

int showCommand(const QStringList& arguments, CliContext& context) {
    QCommandLineParser parser;
    if (const auto status = ParseVerbArguments(parser, arguments, *context.command, 1)) return *status;

    model::Document document;
    if (const model::Result opened = OpenAsAtStartup(document, parser.positionalArguments().first());
        !opened.ok())
        return Report(opened);

    TextTable special(gridHeadings(false));
    for (int row = model::kVfoRow; row <= model::kRptRow; ++row) {
        QStringList cells{files::SpecialRowHeading(row)};
        for (int column = 0; column <= model::ColBclo; ++column)
            cells.append(document.special().text(row, column));
        special.addRow(cells);
    }
    TextTable memory(gridHeadings(true));
    for (int channel = 0; channel < model::kChannelCount; ++channel) {
        if (!document.memory().ChannelInUse(channel)) continue;
        QStringList cells{QString::number(channel)};
        for (int column = 0; column <= model::ColName; ++column)
            cells.append(document.memory().text(channel, column));
        memory.addRow(cells);
    }
    for (const QString& line : special.lines())
        PrintOut(line);
    PrintOut(QString());
    for (const QString& line : memory.lines())
        PrintOut(line);
    return ExitOk;
}

} // namespace zq::cli
