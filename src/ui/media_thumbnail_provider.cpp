#include "ui/media_thumbnail_provider.h"

#include "media/media_list_model.h"
#include "media/media_types.h"
#include "platform/executor.h"
#include "platform/image.h"
#include "platform/process_end.h"
#include "platform/regular_file.h"
#include "platform/video.h"

#include <QFileInfo>
#include <QPointer>

#include <algorithm>

namespace zenvor {

namespace {

class ThumbnailResponse final : public QQuickImageResponse
{
    Q_OBJECT

public:
    explicit ThumbnailResponse(QString path, int longestSide)
        : m_path(std::move(path))
        , m_longestSide(longestSide)
    {
    }

    void cancel() override { m_stop.requestStop(); }
    QQuickTextureFactory *textureFactory() const override
    {
        return QQuickTextureFactory::textureFactoryForImage(m_image);
    }

    // Ends with finished(), after which the response is deleted.
    void decodePicture()
    {
        const BackgroundWork work;
        if (!work)
            return; // the engine, which waits for this, is never to be destroyed
        constexpr qint64 largest = 128 * 1024 * 1024;
        if (!m_stop.stopRequested() && QFileInfo(m_path).size() <= largest) {
            const auto contents = contentsOfFile(m_path);
            m_image = contents ? decodeImage(*contents, m_longestSide).value_or(QImage()) : QImage();
        }
        Q_EMIT finished();
    }

    // The same. The application may end first, and the response with it.
    static Task<> decodeVideo(QPointer<ThumbnailResponse> response)
    {
        constexpr std::chrono::milliseconds position(100);
        const auto path = response->m_path;
        const auto stop = response->m_stop.token();
        const auto image = co_await videoFrame(path, position, response->m_longestSide, stop);
        if (!response)
            co_return;
        response->m_image = image.value_or(QImage());
        Q_EMIT response->finished();
    }

private:
    const QString m_path;
    const int m_longestSide;
    StopSource m_stop;
    QImage m_image;
};

} // namespace

MediaThumbnailProvider::MediaThumbnailProvider()
{
    m_threads.setMaxThreadCount(2);
    m_threads.setThreadPriority(QThread::LowPriority);
    BackgroundWork::endWithThisThread();
}

MediaThumbnailProvider::~MediaThumbnailProvider() = default;

QQuickImageResponse *MediaThumbnailProvider::requestImageResponse(const QString &id,
                                                                  const QSize &requestedSize)
{
    const auto path = thumbnailPath(id);
    const int longestSide = std::max({requestedSize.width(), requestedSize.height(), 1});
    auto *response = new ThumbnailResponse(path, longestSide);
    if (mediaKind(path) == MediaKind::Video)
        MainActor::shared()->post([guard = QPointer(response)] {
            if (guard)
                ThumbnailResponse::decodeVideo(guard); // detached: it ends with the response
        });
    else
        m_threads.start([response] { response->decodePicture(); });
    return response;
}

} // namespace zenvor

#include "media_thumbnail_provider.moc"
