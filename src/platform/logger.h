#pragma once

#include <QAnyStringView>

class QLoggingCategory;

namespace zenvor {

/// Writes to the logging category "<subsystem>.<category>" of Qt. Info and errors are shown unless the
/// host's logging rules hide them, debug messages only if its rules ask for them. The texts reach the
/// host's message handler as they are, without any formatting. From any thread, also while the process
/// ends. Cheap to copy.
class Logger
{
public:
    /// Loggers of the same names share one category, which lives until the process ends.
    Logger(QAnyStringView subsystem, QAnyStringView category);

    void info(QAnyStringView text) const;
    void error(QAnyStringView text) const;
    void debug(QAnyStringView text) const;

private:
    const QLoggingCategory *m_category;
};

} // namespace zenvor
