#include "commands.h"
#include "linksession.h"
#include "model/tables.h"

namespace zq::cli {

int detectCommand(const QStringList& arguments, CliContext& context) {
    QCommandLineParser parser;
    if (const auto status = ParseVerbArguments(parser, arguments, *context.command, 0)) return *status;

    model::Document document;
    LoadStartupData(document);
    link::SerialLink serial;
    if (const model::Result opened = OpenLink(context, serial); !opened.ok()) return Report(opened);
    if (const model::Result detected = link::AutoSelect(serial, document); !detected.ok())
        return Report(detected);
    PrintOut(QStringLiteral("%1, clone code %2")
                 .arg(model::VariantCaption(document.ModelVariant()),
                      document.CloneCodeA() ? QStringLiteral("A") : QStringLiteral("0")));
    return ExitOk;
}

} // namespace zq::cli
