#pragma once

#include "sandbox/body_source.h"
#include "sandbox/http_headers.h"

#include <QStringList>

#include <memory>

class QJsonObject;

namespace zenvor::sandbox {

/// What the service has to say to one request, before it is put on the wire. Length, transfer encoding and
/// connection headers are added when it is sent.
struct Answer
{
    int status = 200;
    Headers headers;
    std::shared_ptr<BodySource> body; ///< null: empty
    QStringList deviations; ///< what the request did wrong; for the log
    QStringList notes; ///< remarkable, but allowed; for the log
};

QByteArray reasonPhrase(int status);
/// "HTTP/1.1 200 OK" with the headers and the blank line.
QByteArray headBytes(int status, const Headers &headers);

Answer bytesAnswer(int status, const QByteArray &contentType, const QByteArray &body);
Answer jsonAnswer(int status, const QJsonObject &object);
/// {"message": …}: one string for one text, an array for several; the texts are also the deviations.
Answer refusal(int status, const QStringList &texts);
/// 405 with the Allow header.
Answer methodRefusal(const QByteArray &allowed);

} // namespace zenvor::sandbox
