#pragma once

#include <QQuickItem>

namespace zenvor {

/// Keeps pointers that press one of our items from being taken over by handlers of the host, which see them
/// behind every item of a window.
class PointerGrabs : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    /// For \a item, from now on; but not for one within a Flickable, which is to take them over.
    Q_INVOKABLE void keep(QQuickItem *item) const;
};

} // namespace zenvor
