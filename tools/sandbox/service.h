#pragma once

#include "sandbox/event_streams.h"
#include "sandbox/fault_queue.h"
#include "sandbox/http_answer.h"
#include "sandbox/http_reader.h"
#include "sandbox/inbox_page.h"
#include "sandbox/protocol.h"
#include "sandbox/recorded_request.h"
#include "sandbox/report_store.h"
#include "sandbox/upload_store.h"

#include <QHash>
#include <QObject>
#include <QUrl>

#include <memory>
#include <optional>

namespace zenvor::sandbox {

/// What the service does with whole requests: which endpoint, what it keeps, what it answers. Knows no
/// sockets. The connections of one sandbox share it.
class Service : public QObject
{
    Q_OBJECT

public:
    /// How the body of a request is to be taken in, decided at its head.
    struct Intake
    {
        std::optional<Answer> refusal; ///< the answer, whatever the body holds
        qint64 bodyLimit = 0;
        std::unique_ptr<IncomingUpload> upload; ///< where the body goes; null: into memory
    };

    explicit Service(QHash<QString, QString> bundleIdsByToken, QObject *parent = nullptr);

    bool open(const QString &folder, QString *error, QStringList *notes);
    void setOrigin(const QUrl &origin) { m_origin = origin; }

    /// A refusal if the Host header names anything but this machine: a web page whose own name was made to
    /// resolve to 127.0.0.1 must not reach the reports.
    static std::optional<Answer> judgeHost(const RequestHead &head);
    /// Whether the request is for the developer (inbox, control), not for the service under test.
    static bool isForDeveloper(const QByteArray &path);

    Intake begin(const RequestHead &head);
    Answer finish(const RequestHead &head, const QByteArray &body, Intake &intake);

    /// To be told with which headers an answer of finish() really goes out: a fault may have changed them.
    void noteSent(const RequestHead &head, const Intake &intake, const Headers &sent);

    FaultQueue &faults() { return m_faults; }
    RequestLog &requests() { return m_requests; }
    ReportStore &reports() { return m_reports; }

Q_SIGNALS:
    void reportReceived(QString id);

private:
    Answer validate(const RequestHead &head, const QByteArray &body);
    Answer ping(const RequestHead &head, const QByteArray &body);
    Answer initUpload(const RequestHead &head, const QByteArray &body);
    Answer completeUpload(const RequestHead &head, const QByteArray &body);
    Answer submitReport(const RequestHead &head, const QByteArray &body);
    Answer storeUpload(const RequestHead &head, IncomingUpload &incoming);
    std::optional<Answer> judgeStorage(const RequestHead &head) const;
    FirstSteps firstSteps() const;

    template<typename Record>
    std::optional<Answer> judge(const RequestHead &head, Reading<Record> &reading,
                                bool isBundleBinding) const;

    QHash<QString, QString> m_bundleIdsByToken;
    QUrl m_origin;
    FaultQueue m_faults;
    RequestLog m_requests;
    EventStreams m_events;
    UploadStore m_uploads;
    ReportStore m_reports;
};

} // namespace zenvor::sandbox
