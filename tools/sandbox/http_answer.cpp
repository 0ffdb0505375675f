#include "sandbox/http_answer.h"

#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace zenvor::sandbox {

using namespace Qt::StringLiterals;

QByteArray reasonPhrase(int status)
{
    static const QHash<int, QByteArray> phrases = {
        {100, "Continue"_ba},
        {101, "Switching Protocols"_ba},
        {102, "Processing"_ba},
        {103, "Early Hints"_ba},
        {200, "OK"_ba},
        {201, "Created"_ba},
        {204, "No Content"_ba},
        {206, "Partial Content"_ba},
        {301, "Moved Permanently"_ba},
        {302, "Found"_ba},
        {303, "See Other"_ba},
        {304, "Not Modified"_ba},
        {307, "Temporary Redirect"_ba},
        {308, "Permanent Redirect"_ba},
        {400, "Bad Request"_ba},
        {401, "Unauthorized"_ba},
        {403, "Forbidden"_ba},
        {404, "Not Found"_ba},
        {405, "Method Not Allowed"_ba},
        {408, "Request Timeout"_ba},
        {409, "Conflict"_ba},
        {411, "Length Required"_ba},
        {413, "Content Too Large"_ba},
        {416, "Range Not Satisfiable"_ba},
        {422, "Unprocessable Content"_ba},
        {429, "Too Many Requests"_ba},
        {431, "Request Header Fields Too Large"_ba},
        {500, "Internal Server Error"_ba},
        {501, "Not Implemented"_ba},
        {502, "Bad Gateway"_ba},
        {503, "Service Unavailable"_ba},
        {504, "Gateway Timeout"_ba},
        {505, "HTTP Version Not Supported"_ba},
    };
    return phrases.value(status, "Status"_ba);
}

QByteArray headBytes(int status, const Headers &headers)
{
    QByteArray head = "HTTP/1.1 "_ba + QByteArray::number(status) + ' ' + reasonPhrase(status) + "\r\n"_ba;
    for (const auto &[name, value] : headers)
        head += name + ": "_ba + value + "\r\n"_ba;
    return head + "\r\n"_ba;
}

Answer bytesAnswer(int status, const QByteArray &contentType, const QByteArray &body)
{
    Answer answer;
    answer.status = status;
    answer.headers = {{"Content-Type"_ba, contentType}, {"X-Content-Type-Options"_ba, "nosniff"_ba}};
    answer.body = bytesSource(body);
    return answer;
}

Answer jsonAnswer(int status, const QJsonObject &object)
{
    return bytesAnswer(status, "application/json"_ba, QJsonDocument(object).toJson(QJsonDocument::Compact));
}

Answer refusal(int status, const QStringList &texts)
{
    const QJsonValue message =
        texts.size() == 1 ? QJsonValue(texts.first()) : QJsonValue(QJsonArray::fromStringList(texts));
    Answer answer = jsonAnswer(status, {{u"message"_s, message}});
    answer.deviations = texts;
    return answer;
}

Answer methodRefusal(const QByteArray &allowed)
{
    Answer answer = refusal(405, {u"the method must be %1"_s.arg(QString::fromLatin1(allowed))});
    setHeader(answer.headers, "Allow"_ba, allowed);
    return answer;
}

} // namespace zenvor::sandbox
