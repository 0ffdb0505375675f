#pragma once

#include <QQuickAsyncImageProvider>
#include <QThreadPool>

namespace zenvor {

/// The pictures behind the URLs that a MediaListModel gives, for the views that show them: decoded on other
/// threads, to the size that is asked for, and not at all if the view has gone before their turn came. Empty
/// for what cannot be decoded.
class MediaThumbnailProvider final : public QQuickAsyncImageProvider
{
public:
    MediaThumbnailProvider();
    ~MediaThumbnailProvider() override;

    QQuickImageResponse *requestImageResponse(const QString &id, const QSize &requestedSize) override;

private:
    QThreadPool m_threads; // its own: a pool that is full of photos would hold up reports
};

} // namespace zenvor
