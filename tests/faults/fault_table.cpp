#include "faults/fault_table.h"

#include <initializer_list>

namespace zenvor::test {
namespace {

using namespace Qt::StringLiterals;

using Kind = Ending::Kind;
using Repeater = FaultCase::Repeater;

const Ending answer{};
const Ending unreadable{.kind = Kind::UnreadableAnswer};
const Ending badUrl{.kind = Kind::Failure, .code = -1000};
const Ending timedOut{.kind = Kind::Failure, .code = -1001};
const Ending unsupportedUrl{.kind = Kind::Failure, .code = -1002};
const Ending noHost{.kind = Kind::Failure, .code = -1003};
const Ending refused{.kind = Kind::Failure, .code = -1004};
const Ending lost{.kind = Kind::Failure, .code = -1005};
const Ending tooManyRedirects{.kind = Kind::Failure, .code = -1007};
const Ending undecodable{.kind = Kind::Failure, .code = -1015};
const Ending noTls{.kind = Kind::Failure, .code = -1200};
const Ending untrusted{.kind = Kind::Failure, .code = -1202};

// It is the service that takes its time to compress what the client unpacks, more where others work too.
constexpr FaultCase::Seconds untilCompressed{.least = 0, .most = 240};

// So does what keeps the client busy, a minute on a clock that runs so fast: a head that Qt Network reads
// byte by byte, a megabyte of short lists for the JSON parser, twenty connections under a sanitizer.
constexpr FaultCase::Seconds whileAtWork{.least = 0, .most = 60};

constexpr const char *interimOnQt = "Qt Network takes an interim answer other than 100 for the answer";
constexpr const char *chunksOnQt = "Qt Network waits for more where a chunk is malformed";
constexpr const char *endless401OnQt = "Qt Network gathers the body of a 401 whole before it tells of it";
constexpr const char *slowHeadOnQt = "Qt Network tells nothing of a head before it is whole";

Ending status(int code, const QString &detail = {})
{
    return {.kind = Kind::Status, .code = code, .detail = detail};
}

class Table
{
public:
    QList<FaultCase> cases;

    void connections();
    void silence();
    void losses();
    void interimAnswers();
    void redirects();
    void statuses();
    void bodies();
    void floods();
    void slowAnswers();

private:
    FaultCase &row(const QString &name, const QByteArray &fault, const Ending &ending)
    {
        cases.append({.name = name, .fault = fault, .ending = ending});
        return cases.last();
    }
    FaultCase &row(const QString &name, Detour detour, const Ending &ending, const QByteArray &fault = {})
    {
        cases.append({.name = name, .fault = fault, .detour = detour, .ending = ending});
        return cases.last();
    }
};

void Table::connections()
{
    row(u"refused"_s, Detour::ClosedPort, refused).inSmoke();
    row(u"unknown name"_s, Detour::UnknownHost, noHost).inSmoke();
    row(u"untrusted certificate"_s, Detour::UntrustedService, untrusted).inSmoke();
    row(u"no TLS there"_s, Detour::PlainService, noTls).inSmoke();
    row(u"TLS cut in the body"_s, Detour::SecureService, lost, R"({"cut":"inBody","bodySize":1000})")
        .inSmoke();
}

void Table::silence()
{
    row(u"stall before the head"_s, R"({"stall":"beforeHeaders"})", timedOut).inSmoke();
    row(u"stall in the head"_s, R"({"stall":"inHeaders"})", timedOut);
    row(u"stall after the head"_s, R"({"stall":"inBody","body":"","contentLength":9})", timedOut);
    row(u"stall in the body"_s, R"({"stall":"inBody","bodySize":1000})", timedOut).inSmoke();
    row(u"stall in the body of an error"_s, R"({"status":500,"stall":"inBody","bodySize":1000})", timedOut);
    row(u"drip that stops"_s, R"({"dripMs":1,"padding":200,"stall":"inBody"})", timedOut);
    row(u"request never read"_s, R"({"stopReading":true})", timedOut).leavingBodyUnread().inSmoke();
}

void Table::losses()
{
    row(u"cut before the head"_s, R"({"cut":"beforeHeaders"})", lost).by(Repeater::Anybody).inSmoke();
    row(u"cut in the head"_s, R"({"cut":"inHeaders"})", lost).by(Repeater::QtOnly).inSmoke();
    row(u"cut in the body"_s, R"({"cut":"inBody","bodySize":1000})", lost).inSmoke();
    row(u"reset before the head"_s, R"({"reset":"beforeHeaders"})", lost).by(Repeater::Anybody).inSmoke();
    row(u"reset in the head"_s, R"({"reset":"inHeaders"})", lost).by(Repeater::QtOnly).inSmoke();
    row(u"reset in the body"_s, R"({"reset":"inBody","bodySize":1000})", lost).inSmoke();
    row(u"processed, then cut"_s, R"({"handle":true,"cut":"beforeHeaders"})", lost).by(Repeater::Anybody);
    row(u"garbage"_s, R"({"garbage":true})", lost).by(Repeater::QtOnly).inSmoke();
    row(u"another protocol"_s, R"({"garbage":"SSH-2.0-x\r\n"})", lost).by(Repeater::QtOnly);
    row(u"short body"_s, R"({"body":"{\"ok\":","contentLength":999})", lost).inSmoke();
    // The silence behind it shows who notices.
    row(u"malformed chunk"_s, R"({"handle":true,"badChunk":true,"stall":"inBody","body":"{\"ok\":true}"})",
        lost)
        .onQt(timedOut, chunksOnQt)
        .inSmoke();
    row(u"head of 400 KB"_s, R"({"headers":{"X-Long":"%1"}})"_ba.replace("%1", QByteArray(400'000, 'x')),
        lost)
        .lasting(whileAtWork, whileAtWork)
        .inSmoke();
}

void Table::interimAnswers()
{
    row(u"100 before the answer"_s, R"({"informational":[100]})", answer);
    row(u"102 before the answer"_s, R"({"informational":[102]})", answer).onQt(lost, interimOnQt);
    row(u"103 before the answer"_s, R"({"informational":[100,103]})", answer)
        .onQt(lost, interimOnQt)
        .inSmoke();
    row(u"101, then silence"_s, R"({"status":101})", timedOut).onQt(lost, interimOnQt);
}

void Table::redirects()
{
    row(u"redirected for ever"_s, R"({"redirect":"{target}"})", tooManyRedirects)
        .sending(21)
        .inSmoke()
        .lasting(whileAtWork, whileAtWork);
    row(u"redirected from https to http"_s, Detour::SecureService, unsupportedUrl,
        R"({"redirect":"{service}{target}"})")
        .inSmoke();
    row(u"redirected to a file"_s, R"({"redirect":"file:///etc/hostname"})", unsupportedUrl).inSmoke();
    row(u"redirected to ftp"_s, R"({"redirect":"ftp://127.0.0.1/x"})", unsupportedUrl).inSmoke();
    row(u"redirected to a closed port"_s, R"({"redirect":"{closed}{target}"})", refused);
    row(u"redirected to no URL"_s, R"({"redirect":"http://127.0.0.1:99999/"})", badUrl).inSmoke();
    row(u"redirected without a place"_s, R"({"status":302,"body":"moved"})", status(302, u"moved"_s))
        .inSmoke();
    row(u"redirected without a place, endlessly"_s, R"({"status":302,"endless":true})", status(302));
    row(u"300"_s, R"({"status":300,"body":"choose"})", status(300, u"choose"_s));
    row(u"304"_s, R"({"status":304})", status(304));

    for (const int code : {301, 302, 303}) {
        const auto byGet = status(405, u"the method must be POST"_s);
        const auto atStorage = code == 303 ? status(405, u"the method must be PUT"_s) : answer;
        row(u"%1 to itself, once"_s.arg(code),
            R"({"redirect":"{target}","status":%1})"_ba.replace("%1", QByteArray::number(code)), byGet)
            .at(RequestKind::Put, atStorage)
            .sending(2)
            .onceOnly()
            .inSmoke();
    }
    for (const int code : {307, 308}) {
        row(u"%1 with the body, once"_s.arg(code),
            R"({"redirect":"{target}","status":%1})"_ba.replace("%1", QByteArray::number(code)), answer)
            .sending(2)
            .onceOnly()
            .inSmoke();
    }
}

void Table::statuses()
{
    for (const auto *challenge : {"Basic realm=\\\"x\\\"", "Digest realm=\\\"x\\\", nonce=\\\"n\\\"",
                                  "Bearer", "Negotiate", "NTLM"}) {
        row(u"401 "_s + QString::fromLatin1(challenge).section(u' ', 0, 0),
            R"({"status":401,"body":"{\"message\":\"who?\"}","headers":{"WWW-Authenticate":"%1"}})"_ba
                .replace("%1", challenge),
            status(401, u"who?"_s))
            .inSmoke();
    }
    row(u"401 without a challenge"_s, R"({"status":401})", status(401));
    row(u"407"_s, R"({"status":407,"headers":{"Proxy-Authenticate":"Basic realm=\"x\""}})", status(407));
    for (const int code : {400, 403, 404, 408, 409, 413, 422, 500, 502, 504, 599}) {
        auto &added = row(QString::number(code),
                          R"({"status":%1,"body":"{\"message\":[\" why \",\"\",\"so\"]}"})"_ba.replace(
                              "%1", QByteArray::number(code)),
                          status(code, u"why, so"_s));
        added.isSmoke = code == 404 || code == 422;
    }
    for (const int code : {429, 503}) {
        row(QString::number(code),
            R"({"status":%1,"headers":{"Retry-After":"3600"}})"_ba.replace("%1", QByteArray::number(code)),
            status(code))
            .inSmoke();
    }
    row(u"413 before the body"_s, R"({"status":413,"when":"head"})", status(413))
        .leavingBodyUnread()
        .inSmoke();
    row(u"500 that quotes a status"_s, R"({"status":500,"body":"Status Code: 404"})",
        status(500, u"Status Code: 404"_s))
        .inSmoke();
    row(u"500 that is not UTF-8"_s, R"({"status":500,"bodyBase64":"/v8AgA=="})", status(500));
    row(u"500 of deep JSON"_s, R"({"status":500,"body":"%1"})"_ba.replace("%1", QByteArray(100'000, '[')),
        status(500, QString(100'000, u'[')));
}

void Table::bodies()
{
    row(u"201"_s, R"({"handle":true,"status":201})", answer);
    row(u"204"_s, R"({"handle":true,"status":204})", unreadable).inSmoke();
    row(u"chunked"_s, R"({"handle":true,"chunked":true})", answer).inSmoke();
    row(u"compressed"_s, R"({"handle":true,"gzip":true})", answer).inSmoke();
    row(u"empty body"_s, R"({"handle":true,"body":""})", unreadable);
    row(u"no JSON"_s, R"({"handle":true,"body":"<html>"})", unreadable).inSmoke();
    row(u"null"_s, R"({"handle":true,"body":"null"})", unreadable);
    row(u"a list"_s, R"({"handle":true,"body":"[true]"})", unreadable);
    row(u"missing fields"_s, R"({"handle":true,"body":"{}"})", unreadable);
    row(u"only ok"_s, R"({"handle":true,"body":"{\"ok\":true}"})", unreadable)
        .at(RequestKind::Complete, answer)
        .inSmoke();
    row(u"wrong types"_s,
        R"({"handle":true,"body":"{\"ok\":1,\"match\":\"yes\",\"upload_id\":7,\"upload_url\":[]}"})",
        unreadable)
        .inSmoke();
    row(u"nulls"_s,
        R"({"handle":true,"body":"{\"ok\":null,\"match\":null,\"upload_id\":null,\"upload_url\":null}"})",
        unreadable);
    row(u"not ok"_s, R"({"handle":true,"body":"{\"ok\":false,\"match\":true}"})", unreadable)
        .at(RequestKind::Validate, answer)
        .inSmoke();
    row(u"not UTF-8"_s,
        R"({"handle":true,"bodyBase64":"%1"})"_ba.replace(
            "%1", "{\"ok\":true,\"match\":true,\"note\":\"\xff\xfe\"}"_ba.toBase64()),
        unreadable)
        .inSmoke();
    row(u"deep JSON"_s,
        R"({"handle":true,"body":"{\"ok\":true,\"match\":true,\"deep\":%1"})"_ba.replace(
            "%1", QByteArray(100'000, '[')),
        unreadable);
    row(u"no compressed bytes"_s, R"({"handle":true,"headers":{"Content-Encoding":"gzip"},"body":"plain"})",
        undecodable)
        .inSmoke();
}

void Table::floods()
{
    row(u"huge JSON"_s, R"({"padding":900000})", answer);
    row(u"JSON beyond the bound"_s, R"({"padding":1100000})", unreadable);
    // Bytes on the wire that unpack to the bound, and from there to what a parser makes of them.
    const auto wide =
        R"({"ok":true,"match":true,"wide":[%1 0]})"_ba.replace("%1", "[0],"_ba.repeated(260'000));
    const auto packed = qCompress(wide).mid(4).toBase64(); // without the length that Qt puts in front
    const auto unpacks =
        R"("headers":{"Content-Encoding":"deflate"},"bodyBase64":"%1"})"_ba.replace("%1", packed);
    row(u"wide JSON"_s, R"({"handle":true,)" + unpacks, answer)
        .at(RequestKind::Init, unreadable)
        .lasting(whileAtWork, {});
    row(u"wide JSON of an error"_s, R"({"status":500,)" + unpacks, status(500))
        .lasting(whileAtWork, whileAtWork);
    row(u"gzip bomb"_s, R"({"handle":true,"gzip":true,"bodySize":100000000})", unreadable)
        .lasting(untilCompressed, untilCompressed)
        .inSmoke();
    row(u"gzip bomb of an error"_s, R"({"status":500,"gzip":true,"bodySize":100000000})", status(500))
        .lasting(untilCompressed, untilCompressed);
    row(u"too long"_s, R"({"handle":true,"bodySize":20000000})", unreadable).inSmoke();
    row(u"endless"_s, R"({"handle":true,"endless":true})", unreadable).inSmoke();
    row(u"endless chunks"_s, R"({"handle":true,"endless":true,"chunked":true})", unreadable);
    row(u"500 of 900 KB"_s, R"({"status":500,"bodySize":900000})", status(500, QString(900'000, u'x')));
    row(u"endless error"_s, R"({"status":500,"endless":true})", status(500)).inSmoke();
    row(u"401 of 900 KB"_s, R"({"status":401,"bodySize":900000})", status(401, QString(900'000, u'x')));
    row(u"401 of 20 MB"_s, R"({"status":401,"bodySize":20000000})", status(401));
    row(u"endless 401"_s, R"({"status":401,"endless":true})", status(401)).notOnQt(endless401OnQt);
}

void Table::slowAnswers()
{
    row(u"late answer"_s, R"({"delayMs":700})", answer).lasting({42, 42}, {42, 42}).inSmoke();
    // At least 600 bytes, one each quarter of a second of the injected clock: more than anybody waits who
    // does not read them.
    row(u"drip"_s, R"({"handle":true,"dripMs":4,"padding":600})", answer)
        .lasting({140, 300}, {60, 60})
        .inSmoke();
    row(u"drip of head and body"_s, R"({"handle":true,"dripMs":4,"dripHeaders":true})", answer)
        .lasting({18, 150}, {15, 60})
        .inSmoke();
    QByteArray fields;
    for (int i = 0; i < 10; ++i)
        fields += (i == 0 ? "" : ",")
            + R"("X-%1":"%2")"_ba.replace("%1", QByteArray::number(i)).replace("%2", QByteArray(50, 'x'));
    row(u"drip of a long head"_s,
        R"({"handle":true,"dripMs":4,"dripHeaders":true,"headers":{%1}})"_ba.replace("%1", fields), answer)
        .lasting({144, 400}, {144, 400})
        .onQt(timedOut, slowHeadOnQt);
}

} // namespace

const QList<FaultCase> &faultTable()
{
    static const auto cases = [] {
        Table table;
        table.connections();
        table.silence();
        table.losses();
        table.interimAnswers();
        table.redirects();
        table.statuses();
        table.bodies();
        table.floods();
        table.slowAnswers();
        return table.cases;
    }();
    return cases;
}

} // namespace zenvor::test
