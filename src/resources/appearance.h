#pragma once

#include <QMarginsF>
#include <QObject>
#include <QPointer>
#include <QWindow>
#include <QtQml/qqmlregistration.h>

class QJSEngine;
class QQmlEngine;

namespace zenvor {

/// What the host's window is like that the screens lie over, at every moment: light or dark, how dense, and
/// where nothing can be seen.
class Appearance : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(bool isDark READ isDark NOTIFY changed)
    Q_PROPERTY(qreal devicePixelRatio READ devicePixelRatio NOTIFY changed)
    Q_PROPERTY(qreal safeAreaLeft READ safeAreaLeft NOTIFY changed)
    Q_PROPERTY(qreal safeAreaTop READ safeAreaTop NOTIFY changed)
    Q_PROPERTY(qreal safeAreaRight READ safeAreaRight NOTIFY changed)
    Q_PROPERTY(qreal safeAreaBottom READ safeAreaBottom NOTIFY changed)

public:
    static Appearance &shared();
    /// Asked by the engine.
    static Appearance *create(QQmlEngine *, QJSEngine *);

    /// From now on what \a window is like; null lets go of it, and all stays as it was.
    void follow(QWindow *window);

    bool isDark() const { return m_isDark; }
    qreal devicePixelRatio() const { return m_devicePixelRatio; }
    qreal safeAreaLeft() const { return m_safeArea.left(); }
    qreal safeAreaTop() const { return m_safeArea.top(); }
    qreal safeAreaRight() const { return m_safeArea.right(); }
    qreal safeAreaBottom() const { return m_safeArea.bottom(); }

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
    QMarginsF m_safeArea;
};

} // namespace zenvor
