#include <zenvor/zenvor.h>

#include "capture/shake_detector.h"
#include "client/report_client.h"
#include "facade/device_registration.h"
#include "facade/pending_attachments.h"
#include "facade/presentation_flow.h"
#include "platform/executor.h"
#include "platform/logger.h"

#include <QCoreApplication>

namespace zenvor {

using namespace Qt::StringLiterals;

struct Zenvor::State
{
    const Logger logger{"com.zenvor.sdk"_L1, "Zenvor"_L1};
    std::optional<ZenvorConfiguration> configuration;
    std::optional<ReportClient> reportClient;
    ShakeDetector shakeDetector;
    PendingAttachments pendingAttachments;
    PresentationFlow presentationFlow{logger};
};

Zenvor &Zenvor::shared()
{
    static auto *zenvor = new Zenvor; // never destroyed: background work may outlive static objects
    return *zenvor;
}

Zenvor::Zenvor() : m_state(std::make_unique<State>())
{
}

Zenvor::~Zenvor() = default;

void Zenvor::configure(const ZenvorConfiguration &configuration)
{
    if (!QCoreApplication::instance()) {
        m_state->logger.error("Zenvor not configured: there is no application object."_L1);
        return;
    }
    if (!MainActor::isCurrentThread()) {
        MainActor::shared()->post([this, configuration] { configure(configuration); });
        return;
    }
    m_state->configuration = configuration;
    m_state->reportClient.emplace(configuration);
    // Without the value, on purpose: who reads logs by this line finds the same text everywhere.
    m_state->logger.info(
        R"(Zenvor configured. shakeToOpenEnabled=\(configuration.shakeToOpenEnabled, privacy: .public))"_L1);
    registerDevice(*m_state->reportClient, m_state->logger);
    if (!configuration.shakeToOpenEnabled()) {
        m_state->shakeDetector.stop();
        return;
    }
    m_state->shakeDetector.start([this] {
        m_state->logger.info("Shake callback received in Zenvor."_L1);
        present();
    });
}

void Zenvor::configure(const QString &token, bool shakeToOpenEnabled)
{
    configure(ZenvorConfiguration(token, shakeToOpenEnabled));
}

void Zenvor::stop()
{
    if (!MainActor::isCurrentThread()) {
        MainActor::shared()->post([this] { stop(); });
        return;
    }
    m_state->shakeDetector.stop();
}

void Zenvor::present()
{
    m_state->logger.info("Manual/automatic present requested."_L1);
    MainActor::shared()->post([this] {
        if (m_state->reportClient)
            sendDuePings(*m_state->reportClient);
        m_state->presentationFlow.presentInternal(m_state->configuration, m_state->reportClient,
                                                  m_state->pendingAttachments);
    });
}

bool Zenvor::setPendingAttachment(const QImage &image, double compressionQuality)
{
    return MainActor::isCurrentThread() && m_state->pendingAttachments.set(image, compressionQuality);
}

bool Zenvor::addPendingAttachment(const QImage &image, double compressionQuality)
{
    return MainActor::isCurrentThread() && m_state->pendingAttachments.add(image, compressionQuality);
}

bool Zenvor::setPendingAttachmentData(const QByteArray &data, const QString &mimeType)
{
    return MainActor::isCurrentThread() && m_state->pendingAttachments.set(data, mimeType);
}

bool Zenvor::addPendingAttachmentData(const QByteArray &data, const QString &mimeType)
{
    return MainActor::isCurrentThread() && m_state->pendingAttachments.add(data, mimeType);
}

bool Zenvor::setPendingAttachmentFile(const QUrl &url, const std::optional<QString> &mimeType)
{
    return MainActor::isCurrentThread() && m_state->pendingAttachments.setFile(url, mimeType);
}

bool Zenvor::addPendingAttachmentFile(const QUrl &url, const std::optional<QString> &mimeType)
{
    return MainActor::isCurrentThread() && m_state->pendingAttachments.addFile(url, mimeType);
}

int Zenvor::setPendingAttachmentFiles(const QList<QUrl> &urls)
{
    return MainActor::isCurrentThread() ? m_state->pendingAttachments.setFiles(urls) : 0;
}

void Zenvor::clearPendingAttachment()
{
    if (MainActor::isCurrentThread())
        m_state->pendingAttachments.clear();
}

void Zenvor::clearPendingAttachments()
{
    clearPendingAttachment();
}

} // namespace zenvor
