#pragma once

#include "resources/string_table.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace zenvor {

/// The string table, as the views see it.
class Texts : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    /// The text for \a key, or \a value, its English default.
    Q_INVOKABLE QString text(const QString &key, const QString &value) const
    {
        return localizedString(key.toUtf8(), value);
    }

    Q_INVOKABLE bool isRightToLeft() const
    {
        return StringTable::shared().layoutDirection() == Qt::RightToLeft;
    }
};

} // namespace zenvor
