#pragma once

#include <zenvor/zenvor_configuration.h>
#include <zenvor/zenvor_export.h>

#include <QByteArray>
#include <QList>
#include <QUrl>

#include <memory>
#include <optional>

class QImage;

namespace zenvor {

/// The library, as an app sees it. Nothing here throws or validates: what fails says so by its result
/// or by a line in the logging category "com.zenvor.sdk.Zenvor".
///
/// To be called on the application object's thread, while there is such an object. From other threads
/// configure() and stop() take effect there a little later, present() may be called anyway, and the
/// operations on attachments change nothing and return false or 0. Without an application object no
/// operation has any effect: configure() comes after it. With a new one, configure() is to be called again.
class ZENVOR_EXPORT Zenvor
{
public:
    /// The only instance, made by the first call, from any thread, and never destroyed.
    static Zenvor &shared();

    Zenvor(const Zenvor &) = delete;
    Zenvor &operator=(const Zenvor &) = delete;

    /// Sets or replaces the configuration: of the flows opened from now on, not of one that is open.
    /// Registers this device with the report service in the background, where failures are retried at
    /// later calls, and turns shake-to-open on or off. Costs the caller no file, network or sensor access.
    void configure(const ZenvorConfiguration &configuration);
    void configure(const QString &token, bool shakeToOpenEnabled);

    /// Turns shake-to-open off until the next configure(). All else stays: present() goes on working.
    void stop();

    /// Opens the feedback flow over what the app shows, later in the event loop. From any thread. Does
    /// nothing but write to the log if the flow is open already, if the library is not configured, or if
    /// the app has no active window. Sends waiting device registrations in the background.
    void present();

    /// What is added here waits for the next flow that opens and goes with its report: the first picture as
    /// the screenshot, the rest as additional attachments. The list may have any length; a flow that does
    /// not open leaves it alone. Each operation named set… empties the list first, and has done so even if
    /// it returns false. Pictures are image/jpeg, image/png and image/webp, videos video/mp4,
    /// video/quicktime and video/webm; other MIME types, with parameters or by another name, are refused.
    ///
    /// Pictures are encoded and decoded before these operations return, which takes a second or two for one
    /// of a hundred megapixels. An image over a buffer of the host's, and bytes that are not the
    /// QByteArray's own (fromRawData), have to stay valid until the report has gone.
    ///
    /// Encodes \a image as JPEG. The quality goes from 0.0 to 1.0; what lies outside counts as the nearer
    /// end, what is not a number as 0.72. Returns false if the image is null or larger than JPEG can hold.
    bool setPendingAttachment(const QImage &image, double compressionQuality);
    bool addPendingAttachment(const QImage &image, double compressionQuality);

    /// Returns false for empty data, another MIME type, or a picture that cannot be decoded or claims an
    /// absurd size; what a video holds is not looked at. The bytes are shared with the caller, not copied.
    /// To set empty data returns true: it only empties the list.
    bool setPendingAttachmentData(const QByteArray &data, const QString &mimeType);
    bool addPendingAttachmentData(const QByteArray &data, const QString &mimeType);

    /// Reads a local file whole, before it returns. Without a \a mimeType the name's extension decides,
    /// and a file with an unknown one has to be a picture. Returns false for what is not a readable file
    /// of this machine or not acceptable as data.
    bool setPendingAttachmentFile(const QUrl &url, const std::optional<QString> &mimeType = {});
    bool addPendingAttachmentFile(const QUrl &url, const std::optional<QString> &mimeType = {});

    /// Returns how many of the files were accepted; the others are left out silently.
    int setPendingAttachmentFiles(const QList<QUrl> &urls);

    void clearPendingAttachment();
    void clearPendingAttachments();

private:
    struct State;

    Zenvor();
    ~Zenvor();

    const std::unique_ptr<State> m_state;
};

} // namespace zenvor
