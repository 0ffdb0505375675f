// What the form does with pictures and videos.
#include "editor/screenshot_editor_view_controller.h"
#include "media/attachment_file.h"
#include "media/attachment_loading.h"
#include "media/media_picker_view_controller.h"
#include "media/video_player_view_controller.h"
#include "platform/image.h"
#include "resources/string_table.h"
#include "ui/feedback_view_controller.h"
#include "ui/media_card.h"
#include "ui/picture_decoding.h"
#include "ui/report_sending.h"

#include <utility>

namespace zenvor {

using namespace Qt::StringLiterals;

void FeedbackViewController::addMediaTapped()
{
    if (!acceptsInput())
        return;
    Q_EMIT endEditing();
    if (showsLimitAlert())
        return;
    const auto didFinishPicking = [self = weak_from_this()](const QList<QUrl> &results) {
        const auto form = locked(self);
        if (form && !results.isEmpty())
            form->addMedia(results);
    };
    presentOver(std::make_shared<MediaPickerViewController>(
                    FormAttachments::limit - m_attachments.usedCount(), didFinishPicking),
                ModalPresentationStyle::FullScreen);
}

void FeedbackViewController::filesDropped(const QList<QUrl> &files)
{
    if (acceptsInput() && !files.isEmpty() && !showsLimitAlert())
        addMedia(files);
}

bool FeedbackViewController::showsLimitAlert()
{
    if (m_attachments.usedCount() < FormAttachments::limit)
        return false;
    showAlert(localizedString("zenvor_attachment_limit_title"_ba, u"Attachment Limit"_s),
              localizedString("zenvor_attachment_limit_message"_ba,
                              u"You can attach up to %d files per report."_s, {FormAttachments::limit}));
    return true;
}

void FeedbackViewController::addMedia(const QList<QUrl> &files)
{
    ++m_loads;
    load(weak_from_this(), files); // detached: it reports what cannot be added
}

Task<> FeedbackViewController::load(std::weak_ptr<ViewController> form, QList<QUrl> results)
{
    QList<PickedAttachment> picked;
    auto loaded = co_await loadAttachmentsFromPicker(std::move(results), FormAttachments::limit);
    for (auto &attachment : loaded)
        picked.append({std::move(attachment), std::nullopt});
    for (auto &candidate : picked) {
        const auto self = locked(form);
        if (!self || self->m_attachments.currentScreenshot)
            break;
        if (candidate.attachment.kind != "screenshot"_L1)
            continue;
        const auto image = co_await decodedScreenshot(candidate.attachment.data);
        candidate.image = image;
        if (image)
            break;
    }
    const auto self = locked(form);
    if (!self)
        co_return;
    self->applyPickedAttachments(std::move(picked));
    if (--self->m_loads == 0) {
        for (const auto &goOn : std::exchange(self->m_whenLoaded, {}))
            goOn(true);
    }
}

void FeedbackViewController::applyPickedAttachments(QList<PickedAttachment> picked)
{
    if (picked.isEmpty()) {
        if (m_isSending) // what it says next counts
            return;
        showAlert(
            localizedString("zenvor_unsupported_file_title"_ba, u"Unsupported File"_s),
            localizedString("zenvor_unsupported_file_message"_ba, u"Please select image or video files."_s));
        return;
    }
    m_attachments.applyPickedAttachments(std::move(picked));
    for (qsizetype i = m_mediaCards.rowCount(); i < m_attachments.additionalAttachments.size(); ++i)
        m_mediaCards.append(new MediaCard(m_attachments.additionalAttachments.at(i), this));
    Q_EMIT attachmentsChanged();
}

void FeedbackViewController::previewVideoAttachment(int index)
{
    auto *card = acceptsInput() ? m_mediaCards.cards().value(index) : nullptr;
    if (card && card->isVideo() && !std::exchange(m_isOpening, true))
        preview(weak_from_this(), card); // detached: it says what cannot be shown
}

Task<> FeedbackViewController::preview(std::weak_ptr<ViewController> form, QPointer<MediaCard> card)
{
    auto file = card->file();
    const auto path = co_await file->path(AttachmentFile::Purpose::Preview);
    const auto self = locked(form);
    if (!self)
        co_return;
    self->m_isOpening = false;
    if (!card || !self->acceptsInput())
        co_return;
    auto playback = path ? VideoPlayback::open(*path) : nullptr;
    if (!playback) {
        self->showPreviewAlert();
        co_return;
    }
    const auto onFailed = [form] {
        if (const auto alive = locked(form))
            alive->showPreviewAlert();
    };
    self->presentOver(
        std::make_shared<VideoPlayerViewController>(std::move(playback), std::move(file), onFailed),
        ModalPresentationStyle::FullScreen);
}

void FeedbackViewController::editScreenshotTapped()
{
    if (!acceptsInput() || !m_attachments.currentScreenshot)
        return;
    presentEditor(*m_attachments.currentScreenshot, [](FeedbackViewController &form, const QImage &image) {
        form.m_attachments.setEditedScreenshot(image);
        Q_EMIT form.attachmentsChanged();
    });
}

void FeedbackViewController::editAdditionalScreenshot(int index)
{
    auto *card = acceptsInput() ? m_mediaCards.cards().value(index) : nullptr;
    if (card && !card->isVideo()
        && !std::exchange(m_isOpening, true)) // detached: a picture that cannot be decoded is not edited
        edit(weak_from_this(), card, m_attachments.additionalAttachments.at(index).data);
}

Task<> FeedbackViewController::edit(std::weak_ptr<ViewController> form, QPointer<MediaCard> card,
                                    QByteArray data)
{
    const auto image = co_await decodedScreenshot(std::move(data));
    const auto self = locked(form);
    if (!self)
        co_return;
    self->m_isOpening = false;
    if (!image || !card || !self->acceptsInput())
        co_return;
    self->presentEditor(*image, [card](FeedbackViewController &editing, const QImage &edited) {
        if (card)
            editing.replaceAdditionalAttachment(card, edited);
    });
}

void FeedbackViewController::presentEditor(const QImage &image,
                                           std::function<void(FeedbackViewController &, QImage)> onSave)
{
    Q_EMIT endEditing();
    const auto saved = [form = weak_from_this(), onSave = std::move(onSave)](QImage edited) {
        if (const auto self = locked(form))
            onSave(*self, std::move(edited));
    };
    presentOver(std::make_shared<ScreenshotEditorViewController>(image, saved),
                ModalPresentationStyle::FullScreen);
}

// Encoded at once: a report that is sent next must not go without what was painted over.
void FeedbackViewController::replaceAdditionalAttachment(MediaCard *card, const QImage &image)
{
    const auto index = m_mediaCards.cards().indexOf(card);
    auto jpeg = encodeJpeg(image, screenshotQuality);
    if (index < 0 || !jpeg)
        return;
    auto &attachment = m_attachments.additionalAttachments[index];
    attachment = {std::move(*jpeg), u"image/jpeg"_s, u"screenshot"_s};
    m_mediaCards.replace(index, new MediaCard(attachment, this))
        ->deleteLater(); // its view lets go of it first
    Q_EMIT attachmentsChanged();
}

void FeedbackViewController::showPreviewAlert()
{
    showAlert(localizedString("zenvor_preview_error_title"_ba, u"Preview Error"_s),
              localizedString("zenvor_preview_error_message"_ba, u"Could not preview selected video."_s));
}

void FeedbackViewController::removeScreenshotTapped()
{
    if (!acceptsInput())
        return;
    m_attachments.removeScreenshot();
    Q_EMIT attachmentsChanged();
}

void FeedbackViewController::removeAdditionalAttachment(int index)
{
    if (!acceptsInput() || index < 0 || index >= m_mediaCards.rowCount())
        return;
    m_attachments.removeAdditionalAttachment(index);
    m_mediaCards.take(index)->deleteLater(); // its view goes first
    Q_EMIT attachmentsChanged();
}

} // namespace zenvor
