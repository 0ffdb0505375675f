#include "client/report_client.h"
#include "client/report_client_error.h"
#include "fuzz_input.h"
#include "support/await.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <curl/curl.h>

#include <algorithm>
#include <memory>

using namespace zenvor;
using namespace zenvor::fuzz;
using namespace Qt::StringLiterals;

namespace {

const auto picture = "the bytes of a picture"_ba;

/// "201", header lines, a blank line and the body; no number is a connection that is lost.
HttpSession::Result answerOf(const QByteArray &text)
{
    bool isStatus = false;
    HttpResponse response;
    response.status = text.left(3).toInt(&isStatus);
    if (!isStatus)
        return UrlErrorCode::NetworkConnectionLost;
    const auto end = text.indexOf("\n\n");
    for (const QByteArray &line : text.left(end).split('\n').mid(1)) {
        if (const auto colon = line.indexOf(':'); colon > 0)
            response.headers.append(line.left(colon).trimmed(), line.mid(colon + 1).trimmed());
    }
    if (end >= 0)
        response.body = text.mid(end + 2);
    return response;
}

/// The service and its storage: answers from the input, one a request, and then no more.
class ForeignService final : public HttpSession
{
public:
    explicit ForeignService(QList<QByteArray> answers) : m_answers(std::move(answers)) {}

    void start(HttpRequest request, StopToken, Done done) override
    {
        auto answer = answerOf(m_answers.value(m_requests.size()));
        m_requests.append(std::move(request));
        m_received.append(answer);
        done(std::move(answer));
    }

    void end() override {}

    const QList<HttpRequest> &requests() const { return m_requests; }
    const HttpResponse *answerTo(qsizetype position) const
    {
        return std::get_if<HttpResponse>(&m_received.at(position));
    }

private:
    QList<QByteArray> m_answers;
    QList<HttpRequest> m_requests;
    QList<Result> m_received;
};

class HastyClock final : public Clock
{
    std::chrono::milliseconds realDuration(std::chrono::milliseconds) const override
    {
        return std::chrono::milliseconds(0);
    }
};

void requireHeaders(const HttpHeaders &headers)
{
    for (const auto &[name, value] : headers.fields()) {
        const auto isVisible = [](char c) {
            return c > 0x20 && c < 0x7f && c != ':';
        };
        require(!name.isEmpty() && std::all_of(name.begin(), name.end(), isVisible), "a field has a name");
        require(!hasControlBytes(value), "a field keeps to its line");
        const auto isSame = [&name = name](const HttpHeaders::Field &field) {
            return field.first.compare(name, Qt::CaseInsensitive) == 0;
        };
        require(std::count_if(headers.fields().begin(), headers.fields().end(), isSame) == 1,
                "no field is sent twice");
    }
    require(headers.contains("Content-Type"), "a body has a type");
    for (const auto *name : {"Content-Length", "Transfer-Encoding", "Expect"})
        require(!headers.contains(name), "how a body is framed is not the service's to say");
}

QByteArray partOf(CURLU *url, CURLUPart part, unsigned flags = 0)
{
    char *text = nullptr;
    const auto code = curl_url_get(url, part, &text, flags);
    const std::unique_ptr<char, decltype(&curl_free)> owner(text, curl_free);
    return code == CURLUE_OK ? QByteArray(text) : QByteArray();
}

/// What was checked is Qt's reading of the URL; what goes out as it came is read by libcurl.
void requireSameUrl(const QByteArray &text, const QUrl &url)
{
    const bool isPlain = std::all_of(text.begin(), text.end(), [](char c) { return c > 0x20 && c < 0x7f; });
    if (!isPlain || !url.userInfo().isEmpty())
        return; // goes out as Qt writes it
    const std::unique_ptr<CURLU, decltype(&curl_url_cleanup)> parsed(curl_url(), curl_url_cleanup);
    if (curl_url_set(parsed.get(), CURLUPART_URL, text.constData(), CURLU_PATH_AS_IS) != CURLUE_OK)
        return; // fails before anything is sent
    require(partOf(parsed.get(), CURLUPART_SCHEME) == url.scheme().toLatin1(),
            "the scheme is the checked one");
    require(partOf(parsed.get(), CURLUPART_HOST).toLower() == url.host(QUrl::FullyEncoded).toLatin1()
                || url.host().contains(u':'), // Qt writes these addresses in their short form
            "the host is the checked one");
    const int port = url.port(url.scheme() == "https"_L1 ? 443 : 80);
    require(partOf(parsed.get(), CURLUPART_PORT, CURLU_DEFAULT_PORT).toInt() == port,
            "the port is the checked one");
}

void requireServiceRequest(const HttpRequest &request)
{
    const auto body = QJsonDocument::fromJson(request.body).object();
    require(request.method == "POST" && request.url.host() == ReportClient::reportEndpoint().host(),
            "the service is told at its own address");
    require(body.value("token"_L1) == "secret"_L1, "every request names the token");
    for (const auto id : body.value("attachment_upload_ids"_L1).toArray())
        require(!id.toString().trimmed().isEmpty(), "an upload has an identifier");
}

void requireStorageRequest(const HttpRequest &request)
{
    require(request.method == "PUT" && request.body == picture, "the storage gets the file");
    require(request.url.scheme() == "https"_L1, "the storage of a secure service is secure");
    require(QUrl(QString::fromUtf8(request.urlAsReceived), QUrl::StrictMode) == request.url,
            "the two forms of a URL are equal");
    requireSameUrl(request.urlAsReceived, request.url);
    for (const auto &[name, value] : request.headers.fields())
        require(!value.contains("secret"), "the storage is not told the token");
}

/// The confirmation that follows an upload names the ETag that the storage gave, and nothing else.
void requireEtag(const HttpResponse &stored, const HttpRequest &confirmation)
{
    const auto body = QJsonDocument::fromJson(confirmation.body).object();
    const auto given = stored.headers.value("ETag").value_or(QByteArray());
    const auto told = body.value("etag"_L1).toString();
    require(body.contains("etag"_L1) == !given.isEmpty(), "an ETag is told where there is one");
    const bool hasMark = given.startsWith("\xef\xbb\xbf"); // which Qt takes for no part of a text
    require(hasMark || told.toUtf8() == given || told.toLatin1() == given, "an ETag is told as it came");
}

void requireExchange(const ForeignService &service)
{
    const auto &requests = service.requests();
    require(requests.size() <= 3 * 3 + 1, "an upload is tried three times");
    for (qsizetype i = 0; i < requests.size(); ++i) {
        const auto &request = requests.at(i);
        const bool isReport = request.url == ReportClient::reportEndpoint();
        require(isReport == (i == requests.size() - 1) && isReport == request.isSentOnce,
                "the report is sent once, after the uploads");
        requireHeaders(request.headers);
        if (request.method == "PUT")
            requireStorageRequest(request);
        else
            requireServiceRequest(request);
        const auto *before = i > 0 ? service.answerTo(i - 1) : nullptr;
        if (request.url == ReportClient::uploadCompleteEndpoint())
            requireEtag(*before, request);
    }
}

/// Unlike await(), without a timer, of which each run would leave one: the fuzzer has its own.
std::exception_ptr outcomeOf(Task<> task)
{
    const auto awaited = std::make_shared<test::Awaited<void>>();
    test::collect(std::move(task), awaited); // detached: reports through the shared record
    if (!awaited->hasEnded())
        awaited->loop.exec();
    // What is left for later would look like a leak of this run.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return awaited->exception;
}

void requireFailureSaysWhat(const std::exception_ptr &failure)
{
    try {
        if (failure)
            std::rethrow_exception(failure);
    } catch (const Error &error) {
        const auto description = error.localizedDescription();
        require(description.startsWith("Report submit "_L1)
                    || description == "Could not parse server response."_L1,
                "a failure says what failed");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    makeApplication();
    const Fields fields(data, size);
    const HastyClock clock;
    ForeignService service(fields.from(2));
    const ReportClient client(ZenvorConfiguration(u"secret"_s, false), service, clock);
    const ReportUploadAttachment attachment{.data = picture,
                                            .mimeType = QString::fromUtf8(fields.at(0)),
                                            .kind = QString::fromUtf8(fields.at(1))};
    const auto labels = normalizeAttachment(attachment);
    require(isAllowedVideoMimeType(labels.mimeType) || isAllowedScreenshotMimeType(labels.mimeType),
            "the service knows the type");
    require(attachmentKind(labels.mimeType) == labels.kind, "the kind goes with the type");

    FeedbackReportPayload payload;
    payload.token = u"secret"_s;
    requireFailureSaysWhat(outcomeOf(client.submit(payload, {attachment})));
    requireExchange(service);
    return 0;
}
