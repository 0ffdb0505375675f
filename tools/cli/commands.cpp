#include "cli/commands.h"

#include "cli/command_line.h"
#include "cli/observed_session.h"
#include "client/report_client.h"
#include "deviceinfo/device_info_provider.h"
#include "pingqueue/device_ping_queue.h"
#include "platform/error.h"
#include "platform/user_defaults.h"

#include <QFile>
#include <QFileInfo>

#include <cstdio>

#ifdef Q_OS_WIN
#include <io.h>
#else
#include <unistd.h>
#endif

namespace zenvor::cli {
namespace {

using namespace Qt::StringLiterals;

class FileError final : public Error
{
public:
    explicit FileError(QString description) : m_description(std::move(description)) {}
    QString localizedDescription() const override { return m_description; }

private:
    QString m_description;
};

void print(std::FILE *stream, const QString &line)
{
    std::fputs((line + u'\n').toLocal8Bit().constData(), stream);
    std::fflush(stream);
}

bool isTerminal()
{
#ifdef Q_OS_WIN
    return _isatty(_fileno(stderr));
#else
    return isatty(STDERR_FILENO) != 0;
#endif
}

HttpSession &observedSession(const CommandLine &line)
{
    const ObservedSession::Options options{.listsRequests = line.isVerbose, .showsProgress = isTerminal()};
    // Never destroyed, as the session behind it: a request may end after the event loop has.
    static auto *session = new ObservedSession(HttpSession::shared(), options);
    return *session;
}

ReportUploadAttachment readAttachment(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw FileError(path + ": "_L1 + file.errorString());
    const auto bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        throw FileError(path + ": "_L1 + file.errorString());
    const auto mimeType = attachmentMimeType(QFileInfo(path).suffix()).value_or(u"image/jpeg"_s);
    return {.data = bytes, .mimeType = mimeType, .kind = attachmentKind(mimeType)};
}

Task<> validate(ReportClient client, QString bundleId)
{
    const auto result = co_await client.validateToken(bundleId);
    print(stdout, result == TokenBundleValidationResult::Matched ? u"matched"_s : u"bundleMismatch"_s);
}

Task<> report(ReportClient client, CommandLine line)
{
    const auto &command = std::get<ReportCommand>(line.command);
    QList<ReportUploadAttachment> attachments;
    for (const auto &path : command.files)
        attachments.append(readAttachment(path));
    auto app = DeviceInfoProvider::makeAppInfo();
    app.bundleId = line.bundleId;
    auto payload = makeFeedbackReportPayload(command.draft, line.token, DeviceInfoProvider::makeDeviceInfo(),
                                             app, Clock::system().currentDateTime());
    co_await client.submit(std::move(*payload), std::move(attachments));
}

UserDefaults storeOf(const QString &bundleId)
{
    return UserDefaults::forApplication(bundleId.trimmed());
}

Task<> flush(ReportClient client, QString bundleId, int maxBatchSize)
{
    DevicePingQueue queue(storeOf(bundleId));
    co_await queue.flush(client, maxBatchSize);
}

Task<> enqueue(QString bundleId, QString deviceId)
{
    DevicePingQueue queue(storeOf(bundleId));
    co_await queue.enqueue(bundleId, deviceId);
}

Task<> execute(ReportClient client, CommandLine line)
{
    if (std::holds_alternative<ValidateCommand>(line.command)) {
        co_await validate(client, line.bundleId);
    } else if (const auto *ping = std::get_if<PingCommand>(&line.command)) {
        co_await client.pingDevice(line.bundleId, ping->deviceId);
    } else if (std::holds_alternative<ReportCommand>(line.command)) {
        co_await report(client, line);
    } else if (const auto *wanted = std::get_if<QueueEnqueueCommand>(&line.command)) {
        co_await enqueue(line.bundleId, wanted->deviceId);
    } else if (const auto *due = std::get_if<QueueFlushCommand>(&line.command)) {
        co_await flush(client, line.bundleId, due->maxBatchSize);
    } else {
        const auto stored = storeOf(line.bundleId).data(DevicePingQueue::storageKey());
        print(stdout, QString::fromUtf8(stored.value_or("[]"_ba)));
    }
}

} // namespace

Task<int> run(CommandLine line)
{
    const ReportClient client(ZenvorConfiguration(line.token, false), observedSession(line));
    try {
        co_await execute(client, std::move(line));
        co_return 0;
    } catch (const std::exception &error) {
        print(stderr, localizedDescription(error));
    }
    co_return 1;
}

} // namespace zenvor::cli
