#include "client/report_client_error.h"
#include "client/response_rules.h"
#include "client/wire_records.h"
#include "fuzz_input.h"
#include "platform/http_message.h"
#include "platform/json.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

using namespace zenvor;
using namespace zenvor::fuzz;
using namespace Qt::StringLiterals;

namespace {

template<typename Record>
std::optional<Record> read(const QByteArray &json)
{
    try {
        return Record::fromJson(json);
    } catch (const JsonDecodingError &error) {
        require(!error.localizedDescription().isEmpty(), "an unreadable answer has a description");
        return std::nullopt;
    }
}

bool isWhole(const InitUploadResponse &answer)
{
    const auto headers = answer.requiredHeaders.value_or(QMap<QString, QString>());
    return fitsJson(answer.uploadId) && fitsJson(answer.uploadURL)
        && std::all_of(headers.keyBegin(), headers.keyEnd(), fitsJson)
        && std::all_of(headers.begin(), headers.end(), fitsJson);
}

QByteArray written(const InitUploadResponse &answer)
{
    JsonWriter json;
    json.boolean("ok"_L1, answer.ok);
    json.string("upload_id"_L1, answer.uploadId);
    json.string("upload_url"_L1, answer.uploadURL);
    auto object = json.toObject();
    if (answer.requiredHeaders) {
        QJsonObject headers;
        for (const auto &[name, value] : answer.requiredHeaders->asKeyValueRange())
            headers.insert(name, value);
        object.insert("required_headers"_L1, headers);
    }
    return QJsonDocument(object).toJson();
}

void readRecords(const QByteArray &body)
{
    const auto validation = read<ValidateTokenResponse>(body);
    const auto completed = read<CompleteUploadResponse>(body);
    require(!validation || completed, "every answer to a validation has an ok");
    require(!validation || validation->ok == completed->ok, "two records read the same ok");

    const auto reserved = read<InitUploadResponse>(body);
    if (!reserved || !isWhole(*reserved))
        return;
    const auto again = read<InitUploadResponse>(written(*reserved));
    require(again.has_value(), "an answer that was read can be written and read again");
    require(again->ok == reserved->ok && again->uploadId == reserved->uploadId
                && again->uploadURL == reserved->uploadURL
                && again->requiredHeaders == reserved->requiredHeaders,
            "an answer is the same when it is read again");
}

void readErrorDetail(const QByteArray &body)
{
    const auto detail = parseServerErrorDetail(body);
    require(!detail || !detail->isEmpty(), "a detail is not empty");
    require(!detail || *detail == detail->trimmed(), "a detail is trimmed");
    require(parseServerErrorDetail(body + "\n ") == detail, "white space behind a body changes nothing");

    HttpRequest request;
    request.url = QUrl(u"https://reports.example/v1/sdk/reports"_s);
    HttpResponse response;
    response.status = 500;
    response.body = body;
    const auto head = u"Report submit failed with status 500 (host=reports.example)"_s;
    try {
        ensureSuccess(u"Report submit"_s, request, response);
    } catch (const ServiceError &error) {
        const auto expected = detail ? head + ": "_L1 + *detail : head;
        require(error.localizedDescription() == expected, "the description ends with the whole detail");
        return;
    }
    require(false, "status 500 is a failure");
}

/// A text of the user's, here the one that came, arrives whole.
void writeText(const QByteArray &body)
{
    const auto text = QString::fromUtf8(body);
    const auto json = ValidateTokenRequest{.token = text, .bundleId = text}.toJson();
    const JsonReader reader(json);
    require(!fitsJson(text) || reader.string("bundle_id"_L1) == text, "what is written can be read");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const auto body = bytesOf(data, size);
    readRecords(body);
    readErrorDetail(body);
    writeText(body);
    return 0;
}
