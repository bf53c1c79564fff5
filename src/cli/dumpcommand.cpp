#include "commands.h"
#include "linksession.h"

#include <cstdio>

namespace zq::cli {

int dumpCommand(const QStringList& arguments, CliContext& context) {
    QCommandLineParser parser;
    const QCommandLineOption output = OutputOption();
    parser.addOption(output);
    if (const auto status = ParseVerbArguments(parser, arguments, *context.command, 0)) return *status;
    if (parser.isSet(output)) {
        if (const model::Result writable = CheckOutputPath(parser.value(output)); !writable.ok())
            return Report(writable);
    }

    link::SerialLink serial;
    if (const model::Result opened = OpenLink(context, serial); !opened.ok()) return Report(opened);
    QString dump;
    model::Result dumped;
    {
        ProgressBar progress(context, QStringLiteral("Dump"));
        const link::StepProgress step = progress.steps();
        int lines = 0;
        // Unlike the service panel, the tool stops at the first block nobody answers.
        dumped = link::DumpAnsweredBlocks(serial, dump, [&](const QString&) {
            if (step) step(lines++, 256); // one call per block dumped
        });
    }
    if (!dumped.ok()) return Report(dumped);
    // Each line ends as the radio's reply did (CR LF).
    const QByteArray bytes = dump.toLatin1();
    if (parser.isSet(output)) return Report(WriteOutput(parser.value(output), bytes));
    std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stdout);
    std::fflush(stdout);
    return ExitOk;
}

} // namespace zq::cli
