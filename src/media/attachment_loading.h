#pragma once

#include "client/report_upload_attachment.h"
#include "platform/task.h"

#include <QList>
#include <QUrl>

namespace zenvor {

/// What \a result, a file that a user has picked, is attached as: a picture, or a video. Nothing if it is
/// neither, is empty, or cannot be read. The file is read as a whole, on another thread. From the main
/// thread.
Task<std::optional<ReportUploadAttachment>> loadAttachment(QUrl result);

/// The same for several, one after the other; what cannot be attached is left out. Ends early when \a most
/// have been loaded.
Task<QList<ReportUploadAttachment>> loadAttachmentsFromPicker(QList<QUrl> results, int most);

} // namespace zenvor
