#include "portaccess.h"

#include <QFile>
#include <QFileInfo>
#include <QStringList>

#include <cerrno>
#include <cstring>
#include <vector>

#ifdef Q_OS_UNIX
#include <grp.h>
#include <pwd.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace zq::link {

namespace {

QString ErrnoText(int error) {
    return QString::fromLocal8Bit(std::strerror(error));
}

#ifdef Q_OS_UNIX
QString GroupName(gid_t gid) {
    std::vector<char> buffer(4096);
    group entry{};
    group* found = nullptr;
    if (getgrgid_r(gid, &entry, buffer.data(), buffer.size(), &found) == 0 && found)
        return QString::fromLocal8Bit(found->gr_name);
    return QString::number(gid);
}

// The user is listed as a member of `groupName` but this process does not carry the group: the
// session began before the user was added.
bool JoinedSinceLogin(const QString& groupName) {
    std::vector<char> buffer(16384);
    group entry{};
    group* found = nullptr;
    if (getgrnam_r(groupName.toLocal8Bit().constData(), &entry, buffer.data(), buffer.size(), &found) != 0 ||
        !found)
        return false;
    const gid_t gid = found->gr_gid;
    const int count = getgroups(0, nullptr);
    std::vector<gid_t> carried(size_t(std::max(count, 0)));
    if (count > 0 && getgroups(count, carried.data()) == count)
        for (gid_t g : carried)
            if (g == gid) return false;
    if (getegid() == gid) return false;

    std::vector<char> userBuffer(16384);
    passwd user{};
    passwd* me = nullptr;
    if (getpwuid_r(geteuid(), &user, userBuffer.data(), userBuffer.size(), &me) != 0 || !me) return false;
    if (me->pw_gid == gid) return true;
    for (char** member = found->gr_mem; member && *member; ++member)
        if (std::strcmp(*member, me->pw_name) == 0) return true;
    return false;
}

bool ProcessAlive(qint64 pid) {
    return pid > 0 && (::kill(pid_t(pid), 0) == 0 || errno == EPERM);
}
#endif

// Serial programs name their lock after the device below /dev, slashes made underscores.
QString LockFileName(const QString& device) {
    QString name = device;
    if (name.startsWith(QLatin1String("/dev/"))) name = name.mid(5);
    return QStringLiteral("LCK..") + name.replace(QLatin1Char('/'), QLatin1Char('_'));
}

// "zq318-utility, process 412" when a live process holds the device's lock file, else empty. The
// first line of a lock file is the process number; Qt's lock files add the program's name.
QString LockHolder(const QString& device, const QString& lockFolder) {
#ifdef Q_OS_UNIX
    if (lockFolder.isEmpty()) return QString();
    QStringList names{LockFileName(device)};
    const QString target = QFileInfo(device).canonicalFilePath();
    if (!target.isEmpty() && target != device) names << LockFileName(target);
    for (const QString& name : names) {
        QFile lock(lockFolder + QLatin1Char('/') + name);
        if (!lock.open(QIODevice::ReadOnly)) continue;
        const QList<QByteArray> lines = lock.read(1024).split('\n');
        bool ok = false;
        const qint64 pid = lines.value(0).trimmed().toLongLong(&ok);
        if (!ok || !ProcessAlive(pid)) continue; // a stale lock holds nothing
        const QString program = QString::fromLocal8Bit(lines.value(1).trimmed());
        return program.isEmpty() ? QStringLiteral("process %1").arg(pid)
                                 : QStringLiteral("%1 (process %2)").arg(program).arg(pid);
    }
#else
    Q_UNUSED(device);
    Q_UNUSED(lockFolder);
#endif
    return QString();
}

} // namespace

PortAccess AccessForErrno(int error) {
    switch (error) {
    case 0:
        return PortAccess::Usable;
    case ENOENT:
    case ENODEV:
    case ENXIO:
    case ENOTDIR:
        return PortAccess::Missing;
    case EACCES:
    case EPERM:
    case EROFS:
        return PortAccess::NoPermission;
    case EBUSY:
    case EAGAIN:
        return PortAccess::Busy;
    default:
        return PortAccess::Unusable;
    }
}

PortProbe ExplainOpenFailure(const PortProbe& seen, QSerialPort::SerialPortError error, int savedErrno,
                             const QString& why) {
    if (seen.access != PortAccess::Usable) return seen;
    PortProbe probe = seen;
    probe.why = why;
    const PortAccess byErrno = AccessForErrno(savedErrno);
    switch (error) {
    case QSerialPort::DeviceNotFoundError:
        probe.access = PortAccess::Missing;
        break;
    case QSerialPort::PermissionError:
        // The device itself is open to this user, so it is held: by a lock file or exclusively.
        probe.access = byErrno == PortAccess::NoPermission ? PortAccess::NoPermission : PortAccess::Busy;
        break;
    default:
        probe.access = byErrno == PortAccess::Busy ? PortAccess::Busy : PortAccess::Unusable;
        break;
    }
    return probe;
}

QString SerialLockFolder() {
    const char* const folders[] = {"/var/lock", "/etc/locks", "/var/spool/locks", "/var/spool/uucp", "/tmp"};
    for (const char* folder : folders) {
        const QFileInfo info(QString::fromLatin1(folder));
        if (info.isDir() && info.isReadable() && info.isWritable()) return info.filePath();
    }
    return QString();
}

PortProbe ProbePort(const QString& device, const QString& lockFolder) {
    PortProbe probe;
#ifdef Q_OS_UNIX
    const QByteArray path = QFile::encodeName(device);
    struct stat info {};
    if (device.isEmpty() || ::stat(path.constData(), &info) != 0) {
        const int error = device.isEmpty() ? ENOENT : errno;
        probe.access = AccessForErrno(error);
        probe.why = ErrnoText(error);
        return probe;
    }
    if (::access(path.constData(), R_OK | W_OK) != 0) {
        const int error = errno;
        probe.access = AccessForErrno(error);
        probe.why = ErrnoText(error);
        if (probe.access == PortAccess::NoPermission) probe.group = GroupName(info.st_gid);
        return probe;
    }
    const QString holder = LockHolder(device, lockFolder.isEmpty() ? SerialLockFolder() : lockFolder);
    if (!holder.isEmpty()) {
        probe.access = PortAccess::Busy;
        probe.holder = holder;
        probe.why = ErrnoText(EBUSY);
    }
#else
    Q_UNUSED(device);
    Q_UNUSED(lockFolder);
#endif
    return probe;
}

QString AccessSummary(const PortProbe& probe) {
    switch (probe.access) {
    case PortAccess::Usable:
        return QStringLiteral("usable");
    case PortAccess::Missing:
        return QStringLiteral("missing");
    case PortAccess::NoPermission:
        return probe.group.isEmpty() ? QStringLiteral("permission denied")
                                     : QStringLiteral("permission denied (group %1)").arg(probe.group);
    case PortAccess::Busy:
        return probe.holder.isEmpty() ? QStringLiteral("busy") : QStringLiteral("busy: %1").arg(probe.holder);
    case PortAccess::Unusable:
        return probe.why.isEmpty() ? QStringLiteral("unusable") : probe.why;
    }
    return QString();
}

QString AccessAdvice(const PortProbe& probe) {
    switch (probe.access) {
    case PortAccess::Usable:
        return probe.why;
    case PortAccess::Missing:
        return QStringLiteral(
            "no such device (is the cable plugged in? \"zq318 ports\" lists the ports there are)");
    case PortAccess::NoPermission: {
        if (probe.group.isEmpty() || probe.group == QLatin1String("root"))
            return QStringLiteral("permission denied: only the administrator may use this device");
#ifdef Q_OS_UNIX
        if (JoinedSinceLogin(probe.group))
            return QStringLiteral("permission denied: you are in group %1, but this session began before you "
                                  "joined it; log out and back in")
                .arg(probe.group);
#endif
        return QStringLiteral("permission denied: the device belongs to group %1; join it with "
                              "\"sudo usermod -aG %1 $USER\", then log out and back in")
            .arg(probe.group);
    }
    case PortAccess::Busy:
        if (!probe.holder.isEmpty())
            return QStringLiteral("the port is busy: %1 has it open; close that program and try again")
                .arg(probe.holder);
        return QStringLiteral("the port is busy: another program has it open (a terminal program, or a modem "
                              "manager probing it); close that program and try again");
    case PortAccess::Unusable:
        return probe.why;
    }
    return QString();
}

} // namespace zq::link
