#pragma once

#include <QByteArray>
#include <QString>

#include <functional>
#include <memory>
#include <optional>

namespace zenvor::sandbox {

/// The bytes of an answer's body, made only as fast as they are sent.
class BodySource
{
public:
    virtual ~BodySource() = default;
    /// At most \a limit bytes, empty at the end.
    virtual QByteArray read(qsizetype limit) = 0;
    /// -1: not known before the end.
    virtual qint64 size() const = 0;
    /// Whether an empty read() means "not yet" instead of the end.
    virtual bool isPaused() const { return false; }
    /// \a resume is called each time when a paused body goes on.
    virtual void onResume(std::function<void()> resume) { Q_UNUSED(resume) }
};

std::unique_ptr<BodySource> bytesSource(QByteArray bytes);
/// \a length bytes from \a first on, or all that follow. Null if the file cannot be read.
std::unique_ptr<BodySource> fileSource(const QString &path, qint64 first = 0,
                                       std::optional<qint64> length = {});
/// \a size bytes of one letter; -1: they never end.
std::unique_ptr<BodySource> fillerSource(qint64 size);
/// What \a plain gives, compressed as one gzip member while it is read.
std::unique_ptr<BodySource> gzipSource(std::unique_ptr<BodySource> plain);

} // namespace zenvor::sandbox
