#include "platform/logger.h"

#include <QByteArray>
#include <QDebug>
#include <QHash>
#include <QLoggingCategory>
#include <QMutex>

namespace zenvor {

namespace {

struct Categories
{
    QMutex mutex;
    QHash<QByteArray, const QLoggingCategory *> byName;
};

const QLoggingCategory *categoryNamed(const QByteArray &name)
{
    // Never deleted, as its categories: what logs in the last destructor of the process finds it alive.
    static auto *const categories = new Categories;
    const QMutexLocker locker(&categories->mutex);
    auto found = categories->byName.constFind(name);
    if (found == categories->byName.constEnd()) {
        // The category keeps only a pointer to its name; the key, which shares the text, keeps that alive.
        found = categories->byName.insert(name, new QLoggingCategory(name.constData(), QtInfoMsg));
    }
    return *found;
}

// The functions that take a format would interpret the text, and QDebug by itself would quote it.
void write(QDebug stream, QAnyStringView text)
{
    stream.nospace().noquote() << text.toString();
}

} // namespace

Logger::Logger(QAnyStringView subsystem, QAnyStringView category)
    : m_category(categoryNamed(subsystem.toString().toUtf8() + '.' + category.toString().toUtf8()))
{
}

void Logger::info(QAnyStringView text) const
{
    if (m_category->isInfoEnabled())
        write(QMessageLogger().info(*m_category), text);
}

void Logger::error(QAnyStringView text) const
{
    if (m_category->isCriticalEnabled())
        write(QMessageLogger().critical(*m_category), text);
}

void Logger::debug(QAnyStringView text) const
{
    if (m_category->isDebugEnabled())
        write(QMessageLogger().debug(*m_category), text);
}

} // namespace zenvor
