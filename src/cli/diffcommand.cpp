#include "commands.h"
#include "files/clonefile.h"
#include "files/csvexchange.h"
#include "model/dialcodec.h"
#include "model/tables.h"

namespace zq::cli {

namespace {

QString shown(const QString& text) {
    return QLatin1Char('"') + text + QLatin1Char('"');
}

struct Side {
    model::Document document;
    QStringList lines; // as in the file
};

model::Result load(const QString& path, Side& side) {
    const model::Result opened = OpenAsAtStartup(side.document, path);
    if (!opened.ok()) return opened;
    side.lines = files::ReadCloneFile(path).image.lines;
    return model::Result::done();
}

QString skipText(const model::MemoryTable& memory, int channel) {
    return memory.number(channel, model::ColSkip) == 1 ? QStringLiteral("On") : QStringLiteral("Off");
}

} // namespace

int diffCommand(const QStringList& arguments, CliContext& context) {
    QCommandLineParser parser;
    if (const auto status = ParseVerbArguments(parser, arguments, *context.command, 2)) return *status;

    Side a, b;
    if (const model::Result loaded = load(parser.positionalArguments().at(0), a); !loaded.ok())
        return Report(loaded);
    if (const model::Result loaded = load(parser.positionalArguments().at(1), b); !loaded.ok())
        return Report(loaded);

    QStringList differences;
    auto differ = [&](const QString& what, const QString& left, const QString& right) {
        if (left != right)
            differences.append(QStringLiteral("%1: %2 | %3").arg(what, shown(left), shown(right)));
    };

    differ(QStringLiteral("header"), a.lines.at(0), b.lines.at(0));
    // Settings bytes by address: the block at 00E0 on line 1, the one at 00F0 on line 2.
    for (int half = 0; half < 2; ++half) {
        for (int byte = 0; byte < 16; ++byte) {
            const QString address =
                QStringLiteral("%1").arg(0xE0 + 16 * half + byte, 4, 16, QLatin1Char('0')).toUpper();
            differ(QStringLiteral("settings byte %1").arg(address), a.lines.at(1 + half).mid(2 * byte, 2),
                   b.lines.at(1 + half).mid(2 * byte, 2));
        }
    }
    for (int row = model::kVfoRow; row <= model::kRptRow; ++row) {
        for (int column = 0; column <= model::ColBclo; ++column) {
            differ(QStringLiteral("%1 %2").arg(files::SpecialRowHeading(row), model::ColumnHeading(column)),
                   a.document.special().text(row, column), b.document.special().text(row, column));
            // the RPT row keeps values it does not show
            if (a.document.special().number(row, column) != b.document.special().number(row, column) &&
                a.document.special().text(row, column) == b.document.special().text(row, column))
                differences.append(QStringLiteral("%1 %2 value: %3 | %4")
                                       .arg(files::SpecialRowHeading(row), model::ColumnHeading(column))
                                       .arg(a.document.special().number(row, column))
                                       .arg(b.document.special().number(row, column)));
        }
    }
    for (int dial = 0; dial < model::kDialCount; ++dial)
        differ(QStringLiteral("dial memory %1").arg(dial + 1), a.document.dialTexts()[dial],
               b.document.dialTexts()[dial]);
    for (int channel = 0; channel < model::kChannelCount; ++channel) {
        const bool inA = a.document.memory().ChannelInUse(channel);
        const bool inB = b.document.memory().ChannelInUse(channel);
        const QString label = QStringLiteral("channel %1").arg(channel);
        if (inA != inB) {
            differences.append(QStringLiteral("%1: %2 | %3")
                                   .arg(label, inA ? QStringLiteral("in use") : QStringLiteral("empty"),
                                        inB ? QStringLiteral("in use") : QStringLiteral("empty")));
            continue;
        }
        if (!inA) continue;
        for (int column = 0; column <= model::ColName; ++column)
            differ(QStringLiteral("%1 %2").arg(label, model::ColumnHeading(column)),
                   a.document.memory().text(channel, column), b.document.memory().text(channel, column));
        differ(QStringLiteral("%1 Skip").arg(label), skipText(a.document.memory(), channel),
               skipText(b.document.memory(), channel));
    }

    for (const QString& line : differences)
        PrintOut(line);
    return differences.isEmpty() ? ExitOk : ExitDifferent;
}

} // namespace zq::cli
