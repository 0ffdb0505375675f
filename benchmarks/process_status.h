#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QHash>

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

/// How often each thread of this process has gone to sleep and been woken.
inline QHash<QString, double> wakeUps()
{
    QHash<QString, double> counts;
    for (const auto &thread : threads())
        counts[thread] =
            statusNumber(QStringLiteral("/proc/self/task/%1/status").arg(thread), "voluntary_ctxt_switches:");
    return counts;
}

/// The same since \a before, of the threads that are still there.
inline double wakeUpsSince(const QHash<QString, double> &before)
{
    const auto now = wakeUps();
    double sum = 0;
    for (auto thread = now.begin(); thread != now.end(); ++thread)
        sum += thread.value() - before.value(thread.key());
    return sum;
}

} // namespace zenvor::bench
