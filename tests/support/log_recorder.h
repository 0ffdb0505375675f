#pragma once

#include <QLoggingCategory>
#include <QMutex>
#include <QStringList>

#include <utility>

namespace zenvor::test {

/// Takes what the library logs while it lives, debug messages included, as "level category: text", with
/// the category's last part. Everything else goes where it went before. One at a time.
class LogRecorder
{
public:
    LogRecorder()
    {
        s_recorder = this;
        m_before = qInstallMessageHandler(record);
        QLoggingCategory::setFilterRules(QStringLiteral("com.zenvor.sdk.*.debug=true"));
    }
    ~LogRecorder()
    {
        QLoggingCategory::setFilterRules({});
        qInstallMessageHandler(m_before);
        s_recorder = nullptr;
    }
    LogRecorder(const LogRecorder &) = delete;
    LogRecorder &operator=(const LogRecorder &) = delete;

    /// What came since the last call.
    QStringList take()
    {
        const QMutexLocker lock(&m_mutex);
        return std::exchange(m_lines, {});
    }

    QStringList lines() const
    {
        const QMutexLocker lock(&m_mutex);
        return m_lines;
    }

private:
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
            s_recorder->m_before(type, context, text);
            return;
        }
        const QMutexLocker lock(&s_recorder->m_mutex);
        s_recorder->m_lines.append(levelName(type) + u' ' + category.mid(prefix.size()) + QStringLiteral(": ")
                                   + text);
    }

    static inline LogRecorder *s_recorder = nullptr;
    QtMessageHandler m_before = nullptr;
    mutable QMutex m_mutex;
    QStringList m_lines;
};

} // namespace zenvor::test
