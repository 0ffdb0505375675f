#pragma once

#include "client/feedback_report.h"
#include "client/report_client.h"
#include "platform/view_controller.h"
#include "ui/form_attachments.h"
#include "ui/keyboard_avoidance.h"
#include "ui/media_card_model.h"

#include <QStringList>
#include <QUrl>

namespace zenvor {

class MediaCard;

/// The form: what the user has filled in, and the sending of it. For one presentation. All that is typed is
/// lost when it goes.
class FeedbackViewController : public ViewController
{
    Q_OBJECT
    Q_PROPERTY(QString sheetTitle READ sheetTitle CONSTANT)
    Q_PROPERTY(QString messagePlaceholder READ messagePlaceholder CONSTANT)
    Q_PROPERTY(bool isBug READ isBug CONSTANT)
    Q_PROPERTY(QStringList occurrenceFrequencies READ occurrenceFrequencies CONSTANT)
    Q_PROPERTY(int selectedOccurrenceFrequency READ selectedOccurrenceFrequency WRITE
                   setSelectedOccurrenceFrequency NOTIFY changed)
    Q_PROPERTY(QString message READ message WRITE setMessage NOTIFY changed)
    Q_PROPERTY(bool isMessagePlaceholderVisible READ isMessagePlaceholderVisible NOTIFY changed)
    Q_PROPERTY(bool hasEndlessLine READ hasEndlessLine NOTIFY changed)
    Q_PROPERTY(QString email READ email WRITE setEmail NOTIFY changed)
    Q_PROPERTY(bool allowsContact READ allowsContact NOTIFY changed)
    Q_PROPERTY(bool isSending READ isSending NOTIFY changed)
    Q_PROPERTY(QVariant screenshot READ screenshot NOTIFY attachmentsChanged)
    Q_PROPERTY(QString helperText READ helperText NOTIFY attachmentsChanged)
    Q_PROPERTY(QAbstractItemModel *mediaCards READ mediaCards CONSTANT)
    Q_PROPERTY(zenvor::KeyboardAvoidance *keyboard READ keyboard CONSTANT)
    Q_PROPERTY(QString addMediaTitle READ addMediaTitle NOTIFY attachmentsChanged)

public:
    /// \a onDismiss is called once when the form has closed itself: at the close button, or after a report
    /// was sent. Not when it was swiped away.
    FeedbackViewController(ZenvorConfiguration configuration, ReportClient reportClient,
                           FeedbackCategory category, FormAttachments attachments,
                           std::function<void()> onDismiss);

    QString viewName() const override { return QStringLiteral("FeedbackSheet"); }

    QString sheetTitle() const;
    QString messagePlaceholder() const;
    bool isBug() const { return m_draft.category == FeedbackCategory::Bug; }
    QStringList occurrenceFrequencies() const;
    int selectedOccurrenceFrequency() const { return int(m_draft.occurrenceFrequency); }
    void setSelectedOccurrenceFrequency(int index);
    QString message() const { return m_draft.message; }
    void setMessage(const QString &message);
    /// Whether thousands of letters follow each other without a blank, in the message or in what is going to
    /// be pasted.
    bool hasEndlessLine() const { return m_hasEndlessLine; }
    bool isMessagePlaceholderVisible() const { return m_isMessagePlaceholderVisible; }
    QString email() const { return m_draft.email; }
    void setEmail(const QString &email);
    bool allowsContact() const { return m_draft.allowContact; }
    bool isSending() const { return m_isSending; }
    QVariant screenshot() const;
    QString helperText() const { return m_attachments.helperText(); }
    /// A MediaCard for each additional attachment.
    QAbstractItemModel *mediaCards() { return &m_mediaCards; }
    QString addMediaTitle() const { return m_attachments.addMediaTitle(); }

    KeyboardAvoidance *keyboard() { return &m_keyboard; }

    Q_INVOKABLE void sendTapped();
    Q_INVOKABLE void closeTapped();
    Q_INVOKABLE void contactToggleTapped();
    Q_INVOKABLE void doneTapped();
    Q_INVOKABLE void addMediaTapped();
    /// The same as if they had been picked.
    Q_INVOKABLE void filesDropped(const QList<QUrl> &files);
    Q_INVOKABLE void previewVideoAttachment(int index);
    Q_INVOKABLE void editScreenshotTapped();
    Q_INVOKABLE void editAdditionalScreenshot(int index);
    Q_INVOKABLE void removeScreenshotTapped();
    Q_INVOKABLE void removeAdditionalAttachment(int index);
    /// The text of the clipboard is going to be a part of the message.
    Q_INVOKABLE void pasteIsComing();
    Q_INVOKABLE void textViewDidBeginEditing();
    Q_INVOKABLE void textViewDidEndEditing();
    /// The sheet was swiped down. A report that is being sent still is.
    Q_INVOKABLE void swipedAway();
    Q_INVOKABLE void leave() override;

Q_SIGNALS:
    void changed();
    void attachmentsChanged();
    /// Every field is to let go of the keyboard, at once.
    void endEditing();

private:
    // Null once the form is gone.
    static std::shared_ptr<FeedbackViewController> locked(const std::weak_ptr<ViewController> &form);

    // The form may go while these wait.
    static Task<> load(std::weak_ptr<ViewController> form, QList<QUrl> results);
    static Task<> edit(std::weak_ptr<ViewController> form, QPointer<MediaCard> card, QByteArray data);
    static Task<> preview(std::weak_ptr<ViewController> form, QPointer<MediaCard> card);

    Task<> send(FeedbackReportPayload payload);
    Task<std::optional<ReportUploadAttachment>> resolvedScreenshotUploadPayload();
    void addMedia(const QList<QUrl> &files);
    void applyPickedAttachments(QList<PickedAttachment> picked);
    void presentEditor(const QImage &image, std::function<void(FeedbackViewController &, QImage)> onSave);
    void replaceAdditionalAttachment(MediaCard *card, const QImage &image);
    bool acceptsInput() const;
    void setSendingState(bool sending);
    void showAlert(const QString &title, const QString &message, std::function<void()> onOk = {});
    bool showsLimitAlert();
    void showPreviewAlert();
    void showTokenAlert();
    void showSuccessAndClose();
    void close();

    const ZenvorConfiguration m_configuration;
    const ReportClient m_reportClient;
    const std::function<void()> m_onDismiss;
    FeedbackDraft m_draft;
    FormAttachments m_attachments;
    MediaCardModel m_mediaCards; // of children of this object
    KeyboardAvoidance m_keyboard;
    bool m_hasEndlessLine = false;
    bool m_isMessagePlaceholderVisible = true;
    bool m_isSending = false;
    bool m_isOpening = false; // a player or an editor
    int m_loads = 0; // of files that are being added
    QList<std::function<void(bool)>> m_whenLoaded;
};

} // namespace zenvor
