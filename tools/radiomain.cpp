// zq318-radio: a virtual radio on a pseudo-terminal, for trying the programs without hardware.
#include "model/tables.h"
#include "radio/radiofault.h"
#include "radio/radioimage.h"
#include "radio/virtualradio.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFile>
#include <QSocketNotifier>
#include <csignal>
#include <cstdio>
#include <sys/signalfd.h>
#include <unistd.h>

using zq::radio::VirtualRadio;

namespace {

int Fail(const QString& message, int status) {
    std::fprintf(stderr, "zq318-radio: %s\n", qPrintable(message));
    return status;
}

} // namespace

int main(int argc, char* argv[]) {
    // SIGINT and SIGTERM arrive through a descriptor, so the event loop ends cleanly and --save runs.
    sigset_t stopSignals;
    sigemptyset(&stopSignals);
    sigaddset(&stopSignals, SIGINT);
    sigaddset(&stopSignals, SIGTERM);
    sigprocmask(SIG_BLOCK, &stopSignals, nullptr);
    const int signalFd = signalfd(-1, &stopSignals, SFD_CLOEXEC | SFD_NONBLOCK);

    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("zq318-radio"));
    QCoreApplication::setApplicationVersion(QStringLiteral(ZQ_VERSION));

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("A virtual radio answering the clone protocol on a "
                                                    "pseudo-terminal."));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption imageOption(QStringLiteral("image"),
                                         QStringLiteral("Load a clone file into memory."),
                                         QStringLiteral("FILE.318"));
    const QCommandLineOption variantOption(QStringLiteral("variant"), QStringLiteral("Model: T, E or TFH."),
                                           QStringLiteral("T|E|TFH"));
    const QCommandLineOption cloneCodeOption(QStringLiteral("clone-code"),
                                             QStringLiteral("Clone code: A or 0."), QStringLiteral("A|0"));
    const QCommandLineOption saveOption(QStringLiteral("save"),
                                        QStringLiteral("Write memory as a clone file on exit."),
                                        QStringLiteral("FILE.318"));
    const QCommandLineOption rateOption(QStringLiteral("line-rate"),
                                        QStringLiteral("Send at this rate, ten bits a character."),
                                        QStringLiteral("BAUD"));
    const QCommandLineOption linkOption(QStringLiteral("link"),
                                        QStringLiteral("Also make a symbolic link to the device here."),
                                        QStringLiteral("PATH"));
    const QCommandLineOption logOption(QStringLiteral("log"), QStringLiteral("Log every command received."),
                                       QStringLiteral("FILE"));
    const QCommandLineOption faultOption(
        QStringLiteral("fault"),
        QStringLiteral(
            "Spoil one exchange: timeout|short|garble|ng|hangup|drop@ADDR|model|end, or silent-end."),
        QStringLiteral("FAULT"));
    parser.addOptions({imageOption, variantOption, cloneCodeOption, saveOption, rateOption, linkOption,
                       logOption, faultOption});
    if (!parser.parse(app.arguments())) return Fail(parser.errorText(), 2);
    if (parser.isSet(QStringLiteral("help"))) {
        std::fputs(qPrintable(parser.helpText()), stdout);
        return 0;
    }
    if (parser.isSet(QStringLiteral("version"))) {
        std::printf("zq318-radio %s\n", ZQ_VERSION);
        return 0;
    }
    if (!parser.positionalArguments().isEmpty()) return Fail(QStringLiteral("unexpected arguments"), 2);

    VirtualRadio radio;
    if (parser.isSet(imageOption)) {
        const zq::model::Result loaded = zq::radio::LoadCloneImage(parser.value(imageOption), radio.memory());
        if (!loaded.ok())
            return Fail(loaded.message() + QStringLiteral(": ") + loaded.detail,
                        loaded.outcome == zq::model::Outcome::DataError ? 5 : 6);
    }
    if (parser.isSet(variantOption)) {
        const QString variant = parser.value(variantOption).toUpper();
        if (variant == QLatin1String("T"))
            radio.setModelCode(zq::radio::kModelCodeT);
        else if (variant == QLatin1String("E"))
            radio.setModelCode(zq::radio::kModelCodeE);
        else if (variant == QLatin1String("TFH"))
            radio.setModelCode(zq::radio::kModelCodeTfh);
        else
            return Fail(QStringLiteral("--variant takes T, E or TFH"), 2);
    }
    if (parser.isSet(cloneCodeOption)) {
        const QString code = parser.value(cloneCodeOption).toUpper();
        if (code != QLatin1String("A") && code != QLatin1String("0"))
            return Fail(QStringLiteral("--clone-code takes A or 0"), 2);
        radio.setCloneCodeA(code == QLatin1String("A"));
    }
    if (parser.isSet(rateOption)) {
        bool ok = false;
        const int baud = parser.value(rateOption).toInt(&ok);
        if (!ok || baud <= 0) return Fail(QStringLiteral("--line-rate takes a positive number"), 2);
        radio.setLineRate(baud);
    }
    for (const QString& text : parser.values(faultOption)) {
        const std::optional<zq::radio::Fault> fault = zq::radio::ParseFault(text);
        if (!fault) return Fail(QStringLiteral("unknown fault %1").arg(text), 2);
        radio.addFault(*fault);
    }
    if (parser.isSet(logOption)) {
        const zq::model::Result logging = radio.setLogFile(parser.value(logOption));
        if (!logging.ok()) return Fail(logging.detail, 6);
    }
    const zq::model::Result opened = radio.open();
    if (!opened.ok()) return Fail(opened.detail, 4);

    const QString linkPath = parser.value(linkOption);
    if (!linkPath.isEmpty()) {
        if (QFile::symLinkTarget(linkPath).size() > 0 || QFile::exists(linkPath)) QFile::remove(linkPath);
        if (!QFile::link(radio.devicePath(), linkPath))
            return Fail(QStringLiteral("cannot make the link %1").arg(linkPath), 6);
    }

    std::printf("%s\n", qPrintable(radio.devicePath()));
    std::fflush(stdout);

    QSocketNotifier stopNotifier(signalFd, QSocketNotifier::Read);
    QObject::connect(&stopNotifier, &QSocketNotifier::activated, &app, [signalFd] {
        signalfd_siginfo info{};
        while (::read(signalFd, &info, sizeof info) > 0) {
        }
        QCoreApplication::quit();
    });
    app.exec();

    radio.hangUp();
    ::close(signalFd);
    if (!linkPath.isEmpty()) QFile::remove(linkPath);
    if (parser.isSet(saveOption)) {
        const zq::model::Result saved = zq::radio::SaveCloneImage(parser.value(saveOption), radio.memory());
        if (!saved.ok()) return Fail(saved.detail, 6);
    }
    return 0;
}
