#pragma once

#include <QLoggingCategory>
#include <QMutex>
#include <QStringList>

#include <atomic>
#include <utility>

namespace zenvor::test {

/// Takes what the library logs while it lives, debug messages included, as "level category: text", with
/// the category's last part. Everything else goes where it went before. One at a time.
class LogRecorder
{
public:
    LogRecorder()
    {
        shared().before = qInstallMessageHandler(record);
        QLoggingCategory::setFilterRules(QStringLiteral("com.zenvor.sdk.*.debug=true"));
    }
    ~LogRecorder()
    {
        QLoggingCategory::setFilterRules({});
        qInstallMessageHandler(shared().before);
        take();
    }
    LogRecorder(const LogRecorder &) = delete;
    LogRecorder &operator=(const LogRecorder &) = delete;

    /// What came since the last call.
    QStringList take()
    {
        const QMutexLocker lock(&shared().mutex);
        return std::exchange(shared().lines, {});
    }

    QStringList lines() const
    {
        const QMutexLocker lock(&shared().mutex);
        return shared().lines;
    }

private:
    // Outlives the recorder: a thread may be in the handler when it is put away.
    struct Shared
    {
        std::atomic<QtMessageHandler> before = nullptr;
        QMutex mutex;
        QStringList lines;
    };

    static Shared &shared()
    {
        static auto *shared = new Shared;
        return *shared;
    }

    static QString levelName(QtMsgType type)
    {
        return type == QtDebugMsg ? QStringLiteral("debug")
            : type == QtInfoMsg   ? QStringLiteral("info")
                                  : QStringLiteral("error");
    }

    static void record(QtMsgType type, const QMessageLogContext &context, const QString &text)
    {
        const auto category = QString::fromUtf8(context.category);
        const auto prefix = QStringLiteral("com.zenvor.sdk.");
        if (!category.startsWith(prefix)) {
            if (const auto before = shared().before.load())
                before(type, context, text);
            return;
        }
        const QMutexLocker lock(&shared().mutex);
        shared().lines.append(levelName(type) + u' ' + category.mid(prefix.size()) + QStringLiteral(": ")
                              + text);
    }
};

} // namespace zenvor::test
