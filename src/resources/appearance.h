#pragma once

#include <QObject>
#include <QPointer>
#include <QWindow>
#include <QtQml/qqmlregistration.h>

class QJSEngine;
class QQmlEngine;

namespace zenvor {

/// What the screens look like: light or dark as the host's window is, at every moment.
class Appearance : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(bool isDark READ isDark NOTIFY changed)
    Q_PROPERTY(qreal devicePixelRatio READ devicePixelRatio NOTIFY changed)

public:
    static Appearance &shared();
    /// Asked by the engine.
    static Appearance *create(QQmlEngine *, QJSEngine *);

    /// From now on the looks of \a window.
    void follow(QWindow *window);

    bool isDark() const { return m_isDark; }
    qreal devicePixelRatio() const { return m_devicePixelRatio; }

Q_SIGNALS:
    void changed();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    Appearance() = default;
    void update();

    QPointer<QWindow> m_window;
    bool m_isDark = false;
    qreal m_devicePixelRatio = 1;
};

} // namespace zenvor
