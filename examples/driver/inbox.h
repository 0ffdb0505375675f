#pragma once

#include <QDir>
#include <QImage>
#include <QJsonObject>
#include <QStringList>

namespace driver {

/// What a user has put into the form.
struct FilledForm
{
    QLatin1StringView message;
    QLatin1StringView email;
    int frequencyIndex = 0; ///< in the menu, from above
    QLatin1StringView frequency; ///< the same, as the service calls it
    bool hasMedia = false; ///< whether attachMedia() was called
    bool hasDrawing = false; ///< whether drawOnScreenshot() was called
};

/// The folder in which zenvor-sandbox keeps what arrived.
class Inbox
{
public:
    explicit Inbox(const QDir &folder);

    /// The folder of the report that has arrived since the last call. Failure unless there is just one.
    QDir takeNew();

private:
    QStringList ids() const;

    const QDir m_reports;
    QStringList m_known;
};

/// Failure, with all that differs, unless \a report is a bug report of what stands in \a form, with a
/// screenshot that shows \a host.
void compare(const QDir &report, const FilledForm &form, const QImage &host);

} // namespace driver
