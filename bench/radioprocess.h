#pragma once
// Starts zq318-radio as a process of its own, so that its work never shares the event loop under
// measurement, and returns the pseudo-terminal it serves (empty when it did not start).
#include <QEventLoop>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTimer>

inline QString StartRadio(QProcess& radio, const QString& program, int baud) {
    QStringList arguments;
    if (baud > 0) arguments << QStringLiteral("--line-rate") << QString::number(baud);
    radio.start(program, arguments);
    QEventLoop loop;
    QObject::connect(&radio, &QProcess::readyReadStandardOutput, &loop, [&] {
        if (radio.canReadLine()) loop.quit();
    });
    QObject::connect(&radio, &QProcess::finished, &loop, &QEventLoop::quit);
    QTimer::singleShot(5000, &loop, &QEventLoop::quit);
    loop.exec();
    return QString::fromLocal8Bit(radio.readLine()).trimmed();
}
