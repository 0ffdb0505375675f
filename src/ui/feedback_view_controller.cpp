#include "ui/feedback_view_controller.h"

#include "deviceinfo/device_info_provider.h"
#include "media/attachment_file.h"
#include "platform/awaitable_callback.h"
#include "resources/string_table.h"
#include "ui/alert_view_controller.h"
#include "ui/form_texts.h"
#include "ui/media_card.h"
#include "ui/report_sending.h"
#include "ui/send_error_message.h"

#include <QClipboard>
#include <QGuiApplication>

namespace zenvor {

using namespace Qt::StringLiterals;

namespace {

constexpr BugOccurrenceFrequency frequencies[] = {
    BugOccurrenceFrequency::FirstTime, BugOccurrenceFrequency::FewTimes, BugOccurrenceFrequency::SeveralTimes,
    BugOccurrenceFrequency::ManyTimes, BugOccurrenceFrequency::AlmostEveryTime};

bool isEndless(const QString &text)
{
    constexpr int endless = 2'000;
    int run = 0;
    for (const QChar letter : text) {
        run = letter.isSpace() ? 0 : run + 1;
        if (run == endless)
            return true;
    }
    return false;
}

} // namespace

FeedbackViewController::FeedbackViewController(ZenvorConfiguration configuration, ReportClient reportClient,
                                               FeedbackCategory category, FormAttachments attachments,
                                               std::function<void()> onDismiss)
    : m_configuration(std::move(configuration))
    , m_reportClient(std::move(reportClient))
    , m_onDismiss(std::move(onDismiss))
    , m_attachments(std::move(attachments))
    , m_keyboard([this] { return hostWindow(); })
{
    m_draft.category = category;
    for (const auto &attachment : m_attachments.additionalAttachments)
        m_mediaCards.append(new MediaCard(attachment, this));
    sweepAttachmentFiles();
}

QString FeedbackViewController::sheetTitle() const
{
    return zenvor::sheetTitle(m_draft.category);
}

QString FeedbackViewController::messagePlaceholder() const
{
    return zenvor::messagePlaceholder(m_draft.category);
}

QStringList FeedbackViewController::occurrenceFrequencies() const
{
    QStringList titles;
    for (const auto frequency : frequencies)
        titles.append(title(frequency));
    return titles;
}

void FeedbackViewController::setSelectedOccurrenceFrequency(int index)
{
    if (index < 0 || index >= int(std::size(frequencies)))
        return;
    m_draft.occurrenceFrequency = frequencies[index];
    Q_EMIT changed();
}

void FeedbackViewController::setMessage(const QString &message)
{
    if (m_draft.message == message)
        return;
    m_draft.message = message;
    m_hasEndlessLine = isEndless(message);
    Q_EMIT changed();
}

void FeedbackViewController::pasteIsComing()
{
    m_hasEndlessLine = m_hasEndlessLine || isEndless(QGuiApplication::clipboard()->text());
    Q_EMIT changed();
}

void FeedbackViewController::setEmail(const QString &email)
{
    if (m_draft.email == email)
        return;
    m_draft.email = email;
    Q_EMIT changed();
}

std::shared_ptr<FeedbackViewController> FeedbackViewController::locked(
    const std::weak_ptr<ViewController> &form)
{
    return std::static_pointer_cast<FeedbackViewController>(form.lock());
}

QVariant FeedbackViewController::screenshot() const
{
    return m_attachments.currentScreenshot ? QVariant(*m_attachments.currentScreenshot) : QVariant();
}

void FeedbackViewController::textViewDidBeginEditing()
{
    m_isMessagePlaceholderVisible = false;
    Q_EMIT changed();
}

void FeedbackViewController::textViewDidEndEditing()
{
    m_isMessagePlaceholderVisible = m_draft.message.trimmed().isEmpty();
    if (m_isMessagePlaceholderVisible)
        m_draft.message.clear();
    Q_EMIT changed();
}

void FeedbackViewController::contactToggleTapped()
{
    if (!acceptsInput())
        return;
    m_draft.allowContact = !m_draft.allowContact;
    Q_EMIT changed();
}

void FeedbackViewController::doneTapped()
{
    Q_EMIT endEditing();
}

// Not while it sends or something lies over it, and not once it is leaving: assistive tools still reach its
// controls then.
bool FeedbackViewController::acceptsInput() const
{
    return !m_isSending && hostWindow() && !isCovered();
}

void FeedbackViewController::sendTapped()
{
    if (!acceptsInput())
        return;
    Q_EMIT endEditing();
    auto payload =
        makeFeedbackReportPayload(m_draft, m_configuration.token(), DeviceInfoProvider::makeDeviceInfo(),
                                  DeviceInfoProvider::makeAppInfo(), QDateTime::currentDateTimeUtc());
    if (!payload || m_isMessagePlaceholderVisible) {
        showAlert(localizedString("zenvor_missing_field_title"_ba, u"Missing Field"_s),
                  localizedString("zenvor_missing_description"_ba, u"Description is required."_s));
        return;
    }
    setSendingState(true);
    send(std::move(*payload)); // detached: it catches everything
}

// A picture that is no file yet is made one, on another thread: that takes longer than a frame.
Task<std::optional<ReportUploadAttachment>> FeedbackViewController::resolvedScreenshotUploadPayload()
{
    if (const auto image = m_attachments.screenshotToEncode()) {
        auto jpeg = co_await encodedScreenshot(*image);
        if (jpeg)
            m_attachments.setEncodedScreenshot(std::move(*jpeg));
    }
    co_return m_attachments.screenshotUpload();
}

Task<> FeedbackViewController::send(FeedbackReportPayload payload)
{
    const auto keepAlive = shared_from_this(); // the send outlives the sheet
    if (m_loads > 0) { // what the user has added goes along
        AwaitableCallback<bool> loaded(
            [this](std::function<void(bool)> done) { m_whenLoaded.append(std::move(done)); });
        co_await loaded;
    }
    auto attachments = m_attachments.additionalAttachments;
    auto screenshot = co_await resolvedScreenshotUploadPayload();
    if (screenshot)
        attachments.prepend(std::move(*screenshot));
    const bool isRefused = co_await isTokenRefused(m_reportClient, payload.app.bundleId);
    if (isRefused) {
        setSendingState(false);
        showTokenAlert();
        co_return;
    }
    const auto failure = co_await submitReport(m_reportClient, std::move(payload), std::move(attachments));
    setSendingState(false);
    if (failure)
        showAlert(localizedString("zenvor_failed_to_send"_ba, u"Failed to Send"_s),
                  userFacingSendErrorMessage(*failure));
    else
        showSuccessAndClose();
}

void FeedbackViewController::setSendingState(bool sending)
{
    m_isSending = sending;
    Q_EMIT changed();
}

void FeedbackViewController::showAlert(const QString &title, const QString &message,
                                       std::function<void()> onOk)
{
    presentOver(std::make_shared<AlertViewController>(title, message, std::move(onOk)),
                ModalPresentationStyle::Alert);
}

void FeedbackViewController::showTokenAlert()
{
    showAlert(localizedString("zenvor_token_configuration_title"_ba, u"Zenvor Token Error"_s),
              localizedString(
                  "zenvor_token_configuration_message"_ba,
                  u"Feedback is unavailable. Please check SDK token configuration in Zenvor dashboard."_s));
}

void FeedbackViewController::showSuccessAndClose()
{
    showAlert(localizedString("zenvor_success_title"_ba, u"Thank You"_s),
              localizedString("zenvor_success_message"_ba, u"Your report has been received."_s),
              [self = weak_from_this()] {
                  if (const auto form = locked(self))
                      form->close();
              });
}

void FeedbackViewController::closeTapped()
{
    if (!acceptsInput())
        return;
    Q_EMIT endEditing();
    close();
}

void FeedbackViewController::close()
{
    dismiss(true, [this] {
        if (m_onDismiss)
            m_onDismiss();
    });
}

void FeedbackViewController::swipedAway()
{
    dismiss(true, {});
}

void FeedbackViewController::leave()
{
    closeTapped();
}

} // namespace zenvor
