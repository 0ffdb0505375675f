#pragma once

#include "faults/fault_pair.h"

#include <QMap>
#include <QStringList>

namespace zenvor::test {

/// What was wrong with pairs, by their positions in the list of all chosen ones. A pair that is not in it
/// held.
using Problems = QMap<int, QStringList>;

/// Plays those of \a pairs in this process and prints what playInWorkers() reads.
void playPairs(const QList<FaultPair> &pairs, const QList<int> &positions);

/// Plays \a positions in \a jobs processes at once, each of them this program with \a arguments and a share
/// of the work: the process-wide parts of the library allow one stage in each, and most of the time goes
/// into waiting. A process that dies fails the pair it was at, and those that it did not come to.
Problems playInWorkers(const QStringList &arguments, int jobs, const QList<int> &positions);

/// The form of the positions among a process's arguments.
QString toArgument(const QList<int> &positions);
QList<int> positionsOf(const QString &argument);

} // namespace zenvor::test
