#include "cli/observed_session.h"

#include <QElapsedTimer>
#include <QLocale>

#include <cstdio>
#include <utility>

namespace zenvor::cli {
namespace {

using namespace Qt::StringLiterals;

QString size(qint64 bytes)
{
    return QLocale::c().formattedDataSize(bytes, 1, QLocale::DataSizeSIFormat);
}

QString requestLine(const HttpRequest &request)
{
    const auto parts = QUrl::RemoveQuery | QUrl::RemoveFragment | QUrl::RemoveUserInfo;
    return QString::fromLatin1(request.method) + u' ' + request.url.toString(parts) + " ("_L1
        + size(request.body.size()) + u')';
}

QString outcome(const HttpSession::Result &result)
{
    if (const auto *code = std::get_if<UrlErrorCode>(&result))
        return UrlError(*code).localizedDescription();
    return QString::number(std::get<HttpResponse>(result).status);
}

void print(const QString &text)
{
    std::fputs(text.toLocal8Bit().constData(), stderr);
    std::fflush(stderr);
}

constexpr auto clearLine = "\r\033[K"_L1;

} // namespace

ObservedSession::ObservedSession(HttpSession &session, Options options)
    : m_session(session)
    , m_options(options)
{
}

void ObservedSession::start(HttpRequest request, StopToken stop, Done done)
{
    const bool showsProgress = m_options.showsProgress && request.method == "PUT";
    if (showsProgress) {
        request.onProgress = [total = request.body.size()](qint64 sent) {
            print(clearLine + size(sent) + " of "_L1 + size(total));
        };
    }
    QElapsedTimer timer;
    timer.start();
    const auto line = m_options.listsRequests ? requestLine(request) : QString();
    const auto report = [showsProgress, line, timer, done = std::move(done)](Result result) {
        if (showsProgress)
            print(clearLine);
        if (!line.isEmpty())
            print(line + ": "_L1 + outcome(result) + ", "_L1 + QString::number(timer.elapsed()) + " ms\n"_L1);
        done(std::move(result));
    };
    m_session.start(std::move(request), std::move(stop), report);
}

} // namespace zenvor::cli
