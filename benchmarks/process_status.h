#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>

namespace zenvor::bench {

/// The number behind \a field in a status file of the kernel; 0 if there is none.
inline double statusNumber(const QString &path, QByteArrayView field)
{
    QFile status(path);
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const auto &line : status.readAll().split('\n')) {
        if (line.startsWith(field))
            return line.mid(field.size()).trimmed().split(' ').first().toDouble();
    }
    return 0;
}

/// Memory of this process, "VmRSS:" or "VmHWM:".
inline double memoryMiB(QByteArrayView field)
{
    return statusNumber(QStringLiteral("/proc/self/status"), field) / 1024;
}

inline QStringList threads()
{
    return QDir(QStringLiteral("/proc/self/task")).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
}

/// How often the threads of this process have gone to sleep and been woken.
inline double wakeUps()
{
    double sum = 0;
    for (const auto &thread : threads())
        sum +=
            statusNumber(QStringLiteral("/proc/self/task/%1/status").arg(thread), "voluntary_ctxt_switches:");
    return sum;
}

} // namespace zenvor::bench
