#include "sandbox/report_files.h"

#include "sandbox/byte_range.h"
#include "sandbox/report_store.h"

#include <algorithm>
#include <optional>

namespace zenvor::sandbox {

using namespace Qt::StringLiterals;

namespace {

// What arrived from an app may be anything; no browser is to run it, wherever it is opened.
constexpr auto filePolicy =
    "default-src 'none'; img-src 'self'; media-src 'self'; style-src 'unsafe-inline'; "
    "base-uri 'none'; form-action 'none'; frame-ancestors 'none'";

struct FileInReport
{
    QString path;
    QByteArray type;
    QByteArray disposition;
};

/// A name that neither a header nor a file system can take for anything else.
QByteArray safeName(const QString &text)
{
    QByteArray name = text.toLatin1();
    for (char &c : name) {
        const bool isHarmless = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9')
            || c == '-' || c == '_' || c == '.';
        if (!isHarmless)
            c = '_';
    }
    return name;
}

// Only names that the store itself knows lead to a file, so no path can be smuggled in.
std::optional<FileInReport> findFile(const QByteArray &idAndName, const ReportStore &reports)
{
    const QList<QByteArray> parts = idAndName.split('/');
    const StoredReport *report =
        parts.size() == 2 ? reports.find(QString::fromLatin1(parts.first())) : nullptr;
    if (report == nullptr)
        return {};
    const QString name = QString::fromLatin1(parts.last());
    QString type = u"application/json"_s;
    if (name != "report.json"_L1) {
        const auto file = std::ranges::find(report->attachments, name, &StoredAttachment::fileName);
        if (file == report->attachments.end())
            return {};
        type = file->mimeType;
    }
    // The type stands in a file that somebody may have edited; what it may make a browser do is listed here.
    static const QStringList shownTypes = {u"application/json"_s, u"image/jpeg"_s, u"image/png"_s,
                                           u"image/webp"_s,       u"video/mp4"_s,  u"video/quicktime"_s,
                                           u"video/webm"_s};
    const bool isShown = shownTypes.contains(type);
    return FileInReport{.path = reports.path(report->id) + u'/' + name,
                        .type = isShown ? type.toLatin1() : "application/octet-stream"_ba,
                        .disposition = (isShown ? "inline"_ba : "attachment"_ba) + "; filename=\""_ba
                            + safeName(report->id + u'-' + name) + '"'};
}

} // namespace

Answer reportFile(const RequestHead &head, const QByteArray &idAndName, const ReportStore &reports)
{
    const auto file = findFile(idAndName, reports);
    auto source = file ? fileSource(file->path) : nullptr;
    if (!source)
        return jsonAnswer(404, {{u"error"_s, u"there is nothing at this path"_s}});

    const qint64 size = source->size();
    // For HEAD, a range has no meaning.
    const ByteRange range = head.method == "GET"_ba ? readRange(head.headers, size) : ByteRange();
    Answer answer = bytesAnswer(200, file->type, {});
    setHeader(answer.headers, "Accept-Ranges"_ba, "bytes"_ba);
    setHeader(answer.headers, "Content-Disposition"_ba, file->disposition);
    setHeader(answer.headers, "Content-Security-Policy"_ba, filePolicy);
    const QByteArray total = '/' + QByteArray::number(size);
    switch (range.kind) {
    case ByteRange::Kind::Whole:
        answer.body = std::move(source);
        break;
    case ByteRange::Kind::Part:
        answer.status = 206;
        answer.body = fileSource(file->path, range.first, range.last - range.first + 1);
        setHeader(answer.headers, "Content-Range"_ba,
                  "bytes "_ba + QByteArray::number(range.first) + '-' + QByteArray::number(range.last)
                      + total);
        break;
    case ByteRange::Kind::OutOfReach:
        answer.status = 416;
        setHeader(answer.headers, "Content-Range"_ba, "bytes *"_ba + total);
        break;
    }
    return answer;
}

} // namespace zenvor::sandbox
