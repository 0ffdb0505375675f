#pragma once

#include <QObject>

namespace zenvor::sandbox {

/// Ends the application's event loop with 0 at SIGINT and SIGTERM. At most one object at a time.
class ExitSignals : public QObject
{
    Q_OBJECT

public:
    explicit ExitSignals(QObject *parent = nullptr);
};

} // namespace zenvor::sandbox
