#pragma once

#include <QCoreApplication>
#include <QMap>
#include <QProcess>

#include <vector>

namespace zenvor::bench {

/// What a process has measured: numbers by their names.
using Figures = QMap<QString, std::vector<double>>;

/// Runs this program once more, with \a arguments, and adds the figures it prints, a name and a number a
/// line.
inline void runProcess(Figures &figures, const QStringList &arguments, const QProcessEnvironment &environment)
{
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(QCoreApplication::applicationFilePath(), arguments);
    if (!process.waitForFinished(-1) || process.exitCode() != 0)
        qFatal("the measured process failed: %s", process.readAllStandardError().constData());
    for (const auto &line : process.readAllStandardOutput().split('\n')) {
        const auto at = line.lastIndexOf(' ');
        if (at > 0)
            figures[QString::fromLatin1(line.left(at))].push_back(line.mid(at + 1).toDouble());
    }
}

} // namespace zenvor::bench
