#include "faults/workers.h"

#include "faults/fault_stage.h"
#include "faults/policy.h"

#include <QCoreApplication>
#include <QEventLoop>
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

class Worker
{
public:
    Worker(const QStringList &arguments, const QList<int> &positions, Problems &problems, QEventLoop &loop)
        : m_problems(problems)
    {
        for (const int position : positions)
            m_problems.insert(position, {u"not played: the process died before"_s});
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        QObject::connect(&m_process, &QProcess::readyReadStandardOutput, &m_process, [this] { read(); });
        QObject::connect(&m_process, &QProcess::stateChanged, &loop, &QEventLoop::quit);
        m_process.start(QCoreApplication::applicationFilePath(),
                        arguments + QStringList{u"--play"_s, toArgument(positions)});
    }

    bool isRunning() const { return m_process.state() != QProcess::NotRunning; }

    void read()
    {
        while (m_process.canReadLine()) {
            const auto line = QString::fromUtf8(m_process.readLine().chopped(1));
            if (line.startsWith(beginMark)) {
                m_current = line.mid(beginMark.size()).toInt();
                m_problems.insert(m_current, {u"the process died"_s});
                m_found.clear();
            } else if (line.startsWith(problemMark)) {
                m_found.append(line.mid(problemMark.size()));
            } else if (line == endMark) {
                m_problems.remove(m_current);
                if (!m_found.isEmpty())
                    m_problems.insert(m_current, m_found);
            }
        }
    }

private:
    QProcess m_process;
    Problems &m_problems;
    QStringList m_found;
    int m_current = 0;
};

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

    Problems problems;
    QEventLoop loop;
    std::vector<std::unique_ptr<Worker>> workers;
    for (const auto &share : shares)
        workers.push_back(std::make_unique<Worker>(arguments, share, problems, loop));
    const auto isRunning = [](const auto &worker) {
        return worker->isRunning();
    };
    while (std::any_of(workers.begin(), workers.end(), isRunning)) {
        loop.exec();
    }
    for (const auto &worker : workers)
        worker->read();
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
