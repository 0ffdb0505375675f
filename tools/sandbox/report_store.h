#pragma once

#include <QDateTime>
#include <QJsonObject>
#include <QStringList>

#include <optional>

namespace zenvor::sandbox {

/// A file of a report, under its name in the report's folder.
struct StoredAttachment
{
    QString fileName; ///< such as 1-screenshot.png
    QString kind;
    QString mimeType;
    qint64 bytes = 0;
};

struct StoredReport
{
    QString id; ///< also the name of its folder
    QDateTime receivedAt;
    QJsonObject body; ///< as received, but for the token, of which the last characters remain
    QList<StoredAttachment> attachments;
};

/// A file that is to become an attachment.
struct AttachmentSource
{
    QString path;
    QString kind;
    QString mimeType;
    qint64 bytes = 0;
};

/// The reports received so far, in memory and in a folder of one folder each.
class ReportStore
{
public:
    /// Creates the folder and reads what earlier runs left; \a notes names what had to be skipped.
    bool open(const QString &folder, QString *error, QStringList *notes);

    /// Keeps a report and moves its files in. Nothing if the disk refuses; the report is then not there.
    std::optional<StoredReport> add(const QJsonObject &body, const QList<AttachmentSource> &files,
                                    QString *error);

    /// Newest first.
    const QList<StoredReport> &all() const { return m_reports; }
    qsizetype size() const { return m_reports.size(); }
    bool isEmpty() const { return m_reports.isEmpty(); }
    const StoredReport &newest() const { return m_reports.first(); }
    const StoredReport *find(const QString &id) const;
    /// The folder of that report.
    QString path(const QString &id) const;

private:
    std::optional<StoredReport> load(const QString &id) const;

    QString m_folder;
    QList<StoredReport> m_reports;
};

/// "…" and the last four characters; nothing but the dots for a token too short to show any of.
QString redactedToken(const QString &token);
/// The object with its "token" redacted.
QJsonObject withoutToken(QJsonObject object);

} // namespace zenvor::sandbox
