#pragma once

#include "platform/executor.h"
#include "platform/stop_token.h"
#include "platform/task.h"

#include <QByteArray>
#include <QImage>
#include <QString>

#include <memory>
#include <optional>

namespace zenvor {

/// The file in the temporary folder through which players reach a video that is held in memory. Written when
/// it is first asked for, readable for nobody but the user, and removed with this object. To be made as a
/// shared pointer. Any thread.
class AttachmentFile : public std::enable_shared_from_this<AttachmentFile>
{
public:
    enum class Purpose { Thumbnail, Preview };

    AttachmentFile(QByteArray data, QString mimeType);
    ~AttachmentFile();
    AttachmentFile(const AttachmentFile &) = delete;
    AttachmentFile &operator=(const AttachmentFile &) = delete;

    /// Where it is; nothing if it cannot be written, and then the next call tries again. \a purpose becomes a
    /// part of the name of a new file.
    Task<std::optional<QString>> path(Purpose purpose);

private:
    Task<std::optional<QString>> pathHere(Purpose purpose);
    bool write(const QString &path) const;

    const QByteArray m_data;
    const QString m_mimeType;
    const std::shared_ptr<Executor> m_executor = makeBackgroundExecutor();
    QString m_path; // the executor's; empty while there is no file
};

/// The picture that stands for the video in \a file, upright and at most 400 pixels long and high. Nothing if
/// there is none to be had.
Task<std::optional<QImage>> videoThumbnailImage(std::shared_ptr<AttachmentFile> file);

/// Removes what earlier processes of this user left behind more than a day ago, on another thread.
void sweepAttachmentFiles();

} // namespace zenvor
