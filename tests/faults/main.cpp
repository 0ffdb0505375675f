#include "faults/workers.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QThread>

#include <cstdio>
#include <numeric>

using namespace zenvor::test;
using namespace Qt::StringLiterals;

namespace {

int complain(const QString &text)
{
    std::fprintf(stderr, "%s\n", qPrintable(text));
    return 2;
}

QList<FaultPair> chosenPairs(const QCommandLineParser &parser)
{
    const auto session = parser.value(u"session"_s);
    const auto filter = parser.value(u"filter"_s);
    QList<FaultPair> chosen;
    for (const auto &pair : allFaultPairs()) {
        const bool isWanted = (session == "both"_L1 || session == nameOf(pair.session))
            && (!parser.isSet(u"smoke"_s) || pair.isSmoke())
            && pair.name().contains(filter, Qt::CaseInsensitive);
        if (isWanted)
            chosen.append(pair);
    }
    return chosen;
}

void list(const QList<FaultPair> &pairs)
{
    for (const auto &pair : pairs) {
        const auto &fault = pair.fault;
        QString remark;
        if (!fault.isPlayedOnQt)
            remark = u"  (not over qt: %1)"_s.arg(fault.reasonOnQt);
        else if (pair.session == SessionKind::Qt && fault.endingOnQt)
            remark = u"  (%1)"_s.arg(fault.reasonOnQt);
        std::printf("%s%s\n", qPrintable(pair.name()), qPrintable(remark));
    }
}

// The arguments for the processes that play the pairs.
QStringList choice(const QCommandLineParser &parser)
{
    QStringList arguments{u"--session"_s, parser.value(u"session"_s), u"--filter"_s,
                          parser.value(u"filter"_s)};
    if (parser.isSet(u"smoke"_s))
        arguments.append(u"--smoke"_s);
    return arguments;
}

int run(const QList<FaultPair> &pairs, const QStringList &arguments, int jobs)
{
    QElapsedTimer timer;
    timer.start();
    QList<int> positions(pairs.size());
    std::iota(positions.begin(), positions.end(), 0);
    const auto firstProblems = playInWorkers(arguments, jobs, positions);
    // The injected clock runs on while other processes have the processor.
    const auto problems =
        firstProblems.isEmpty() ? Problems() : playInWorkers(arguments, 1, firstProblems.keys());

    for (const auto &[position, texts] : problems.asKeyValueRange())
        std::printf("FAILED %s\n    %s\n", qPrintable(pairs.at(position).name()),
                    qPrintable(texts.join("\n    "_L1)));
    for (const auto &[position, texts] : firstProblems.asKeyValueRange()) {
        if (!problems.contains(position))
            std::printf("held when played again: %s\n    %s\n", qPrintable(pairs.at(position).name()),
                        qPrintable(texts.join("\n    "_L1)));
    }
    std::printf("%d pairs run, %d held (%d of them when played again), in %.1f s\n", int(pairs.size()),
                int(pairs.size() - problems.size()), int(firstProblems.size() - problems.size()),
                double(timer.elapsed()) / 1000);
    return problems.isEmpty() ? 0 : 1;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(
        u"Plays every fault on every request of the library, over each HTTP session, and checks what comes "
        "of it. What does not hold is played once more, alone, in case the machine was too busy for the "
        "time limits. Exits with 1 if anything does not hold then."_s);
    parser.addHelpOption();
    QCommandLineOption play(u"play"_s, {}, u"POSITIONS"_s);
    play.setFlags(QCommandLineOption::HiddenFromHelp);
    parser.addOptions(
        {{u"session"_s, u"Over which session: curl, qt or both."_s, u"NAME"_s, u"both"_s},
         {u"smoke"_s, u"A representative part, in half a minute."_s},
         {u"filter"_s, u"Only pairs with TEXT in their names."_s, u"TEXT"_s},
         {u"jobs"_s, u"How many at once."_s, u"N"_s, QString::number(2 * QThread::idealThreadCount())},
         {u"list"_s, u"Print the names of the pairs and play none."_s},
         play});
    parser.process(application);
    if (!QStringList{u"curl"_s, u"qt"_s, u"both"_s}.contains(parser.value(u"session"_s)))
        return complain(u"--session takes curl, qt or both."_s);
    const auto pairs = chosenPairs(parser);
    if (pairs.isEmpty())
        return complain(u"There is no such pair."_s);

    if (parser.isSet(u"list"_s))
        list(pairs);
    else if (parser.isSet(play))
        playPairs(pairs, positionsOf(parser.value(play)));
    else
        return run(pairs, choice(parser), std::max(parser.value(u"jobs"_s).toInt(), 1));
    return 0;
}
