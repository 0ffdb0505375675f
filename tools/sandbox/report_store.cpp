#include "sandbox/report_store.h"

#include "sandbox/field_reader.h"
#include "sandbox/upload_store.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>
#include <QSaveFile>

#include <algorithm>

namespace zenvor::sandbox {

using namespace Qt::StringLiterals;

namespace {

bool writeJson(const QString &path, const QJsonObject &object)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    file.write(QJsonDocument(object).toJson());
    return file.commit();
}

std::optional<QJsonObject> readJson(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll());
    return document.isObject() ? std::optional(document.object()) : std::nullopt;
}

QString suffix(const QString &mimeType)
{
    static const QHash<QString, QString> suffixes = {
        {u"image/jpeg"_s, u"jpg"_s}, {u"image/png"_s, u"png"_s},       {u"image/webp"_s, u"webp"_s},
        {u"video/mp4"_s, u"mp4"_s},  {u"video/quicktime"_s, u"mov"_s}, {u"video/webm"_s, u"webm"_s},
    };
    return suffixes.value(mimeType, u"bin"_s);
}

QJsonObject metaJson(const StoredReport &report)
{
    QJsonArray attachments;
    for (const StoredAttachment &attachment : report.attachments)
        attachments << QJsonObject{{u"file"_s, attachment.fileName},
                                   {u"kind"_s, attachment.kind},
                                   {u"mime_type"_s, attachment.mimeType},
                                   {u"bytes"_s, attachment.bytes}};
    return {{u"received_at"_s, report.receivedAt.toString(Qt::ISODateWithMs)},
            {u"attachments"_s, attachments}};
}

/// Whether it can be part of a path and of a link as it is. Names that the store gives always can; somebody
/// may have renamed or edited what lies in the folder.
bool isPlainName(const QString &name)
{
    static const QRegularExpression plain(u"\\A[A-Za-z0-9_-][A-Za-z0-9._-]*\\z"_s);
    return plain.match(name).hasMatch();
}

bool newerFirst(const StoredReport &a, const StoredReport &b)
{
    return a.receivedAt > b.receivedAt;
}

} // namespace

bool ReportStore::open(const QString &folder, QString *error, QStringList *notes)
{
    m_folder = folder;
    m_reports.clear();
    QDir dir(folder);
    if (!dir.mkpath(u"."_s)) {
        *error = u"The folder %1 cannot be created."_s.arg(folder);
        return false;
    }
    const QStringList ids = dir.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString &id : ids) {
        if (const auto report = load(id))
            m_reports << *report;
        else
            *notes << u"skipped %1: it does not hold a report"_s.arg(dir.filePath(id));
    }
    std::ranges::stable_sort(m_reports, newerFirst);
    return true;
}

std::optional<StoredReport> ReportStore::load(const QString &id) const
{
    if (!isPlainName(id))
        return {};
    const auto body = readJson(path(id) + u"/report.json"_s);
    const auto meta = readJson(path(id) + u"/meta.json"_s);
    if (!body || !meta)
        return {};
    QStringList mistakes;
    FieldReader reader(*meta, {}, mistakes);
    StoredReport report;
    report.id = id;
    report.body = *body;
    report.receivedAt =
        QDateTime::fromString(reader.text("received_at"_L1).value_or(QString()), Qt::ISODateWithMs);
    const QJsonArray attachments = reader.value("attachments"_L1).value_or(QJsonValue()).toArray();
    for (const QJsonValue item : attachments) {
        FieldReader file(item.toObject(), {}, mistakes);
        StoredAttachment attachment;
        attachment.fileName = file.text("file"_L1).value_or(QString());
        attachment.kind = file.text("kind"_L1).value_or(QString());
        attachment.mimeType = file.text("mime_type"_L1).value_or(QString());
        attachment.bytes = file.integer("bytes"_L1).value_or(0);
        if (!isPlainName(attachment.fileName) || !QFileInfo::exists(path(id) + u'/' + attachment.fileName))
            return {};
        report.attachments << attachment;
    }
    return mistakes.isEmpty() && report.receivedAt.isValid() ? std::optional(report) : std::nullopt;
}

std::optional<StoredReport> ReportStore::add(const QJsonObject &body, const QList<AttachmentSource> &files,
                                             QString *error)
{
    StoredReport report;
    report.receivedAt = QDateTime::currentDateTimeUtc();
    report.id = report.receivedAt.toString(u"yyyyMMdd'T'HHmmss'Z'"_s) + u'-' + randomHex(3);
    report.body = withoutToken(body);
    for (const AttachmentSource &file : files) {
        const QString name =
            QString::number(report.attachments.size() + 1) + u'-' + file.kind + u'.' + suffix(file.mimeType);
        report.attachments << StoredAttachment{name, file.kind, file.mimeType, file.bytes};
    }

    // A hidden folder until everything is in it: a crash never leaves half a report among the whole ones.
    const QString unfinished = m_folder + u"/.unfinished-"_s + report.id;
    bool isDone = QDir().mkpath(unfinished) && writeJson(unfinished + u"/report.json"_s, report.body)
        && writeJson(unfinished + u"/meta.json"_s, metaJson(report));
    for (qsizetype i = 0; isDone && i < files.size(); ++i)
        isDone = QFile::rename(files.at(i).path, unfinished + u'/' + report.attachments.at(i).fileName);
    if (!isDone || !QDir().rename(unfinished, path(report.id))) {
        for (qsizetype i = 0; i < files.size(); ++i)
            QFile::rename(unfinished + u'/' + report.attachments.at(i).fileName, files.at(i).path);
        QDir(unfinished).removeRecursively();
        *error = u"the report cannot be written below "_s + m_folder;
        return {};
    }
    m_reports.prepend(report);
    return report;
}

const StoredReport *ReportStore::find(const QString &id) const
{
    const auto found = std::ranges::find(m_reports, id, &StoredReport::id);
    return found == m_reports.end() ? nullptr : &*found;
}

QString ReportStore::path(const QString &id) const
{
    return m_folder + u'/' + id;
}

QString redactedToken(const QString &token)
{
    constexpr qsizetype shown = 4;
    return u"…"_s + (token.size() > 2 * shown ? token.right(shown) : QString());
}

QJsonObject withoutToken(QJsonObject object)
{
    const auto token = object.find(u"token"_s);
    if (token != object.end())
        *token = redactedToken(token->toString());
    return object;
}

} // namespace zenvor::sandbox
