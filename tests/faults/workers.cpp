#include "faults/workers.h"

#include "faults/fault_stage.h"
#include "faults/policy.h"

#include <QCoreApplication>
#include <QProcess>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <vector>

namespace zenvor::test {
namespace {

using namespace Qt::StringLiterals;

// The lines between a process and the one that started it: a pair begins, has a problem, is over.
constexpr auto beginMark = "begin "_L1;
constexpr auto problemMark = "problem "_L1;
constexpr auto endMark = "end"_L1;

void print(const QString &line)
{
    std::fprintf(stdout, "%s\n", qPrintable(line));
    std::fflush(stdout);
}

// What a process printed that had to play \a positions.
Problems problemsIn(const QString &output, const QList<int> &positions)
{
    Problems problems;
    for (const int position : positions)
        problems.insert(position, {u"not played: the process died before"_s});
    int current = 0;
    QStringList found;
    for (const auto &line : output.split(u'\n')) {
        if (line.startsWith(beginMark)) {
            current = line.mid(beginMark.size()).toInt();
            problems.insert(current, {u"the process died"_s});
            found.clear();
        } else if (line.startsWith(problemMark)) {
            found.append(line.mid(problemMark.size()));
        } else if (line == endMark) {
            problems.remove(current);
            if (!found.isEmpty())
                problems.insert(current, found);
        }
    }
    return problems;
}

} // namespace

void playPairs(const QList<FaultPair> &pairs, const QList<int> &positions)
{
    FaultStage stage;
    for (const int position : positions) {
        const auto &pair = pairs.at(position);
        print(beginMark + QString::number(position));
        const auto observation = stage.play(pair);
        for (const auto &problem : differences(expectedOutcome(pair), observation.outcome)
                 + excesses(limitsOf(pair), observation.usage))
            print(problemMark + problem);
        print(endMark);
    }
}

Problems playInWorkers(const QStringList &arguments, int jobs, const QList<int> &positions)
{
    std::vector<QList<int>> shares(size_t(std::min(jobs, int(positions.size()))));
    for (qsizetype i = 0; i < positions.size(); ++i)
        shares[size_t(i) % shares.size()].append(positions.at(i));

    std::vector<std::unique_ptr<QProcess>> workers;
    for (const auto &share : shares) {
        auto worker = std::make_unique<QProcess>();
        worker->setProcessChannelMode(QProcess::ForwardedErrorChannel);
        worker->start(QCoreApplication::applicationFilePath(),
                      arguments + QStringList{u"--play"_s, toArgument(share)});
        workers.push_back(std::move(worker));
    }
    Problems problems;
    for (size_t i = 0; i < shares.size(); ++i) {
        workers[i]->waitForFinished(-1);
        problems.insert(problemsIn(QString::fromUtf8(workers[i]->readAllStandardOutput()), shares[i]));
    }
    return problems;
}

QString toArgument(const QList<int> &positions)
{
    QStringList numbers;
    for (const int position : positions)
        numbers.append(QString::number(position));
    return numbers.join(u',');
}

QList<int> positionsOf(const QString &argument)
{
    QList<int> positions;
    for (const auto &number : argument.split(u','))
        positions.append(number.toInt());
    return positions;
}

} // namespace zenvor::test
