#pragma once

#include "support/sanitized.h"

#include <QByteArray>
#include <QFile>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace zenvor::test {

/// How much resident memory the process takes beyond what it has when this is made. Nothing is known
/// where the system does not tell, and under a sanitizer.
class PeakMemory
{
public:
    PeakMemory()
    {
#ifdef __GLIBC__
        malloc_trim(0); // what was freed earlier must not hide what is taken now
#endif
        QFile reset(QStringLiteral("/proc/self/clear_refs"));
        if (reset.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
            reset.write("5"); // sets the peak back to what is resident now
        m_before = peak();
    }

    qint64 growth() const { return isSanitized ? 0 : peak() - m_before; }

private:
    static qint64 peak()
    {
        QFile status(QStringLiteral("/proc/self/status"));
        if (!status.open(QIODevice::ReadOnly))
            return 0;
        for (const auto &line : status.readAll().split('\n')) {
            if (line.startsWith("VmHWM:"))
                return line.simplified().split(' ').value(1).toLongLong() * 1024;
        }
        return 0;
    }

    qint64 m_before = 0;
};

} // namespace zenvor::test
