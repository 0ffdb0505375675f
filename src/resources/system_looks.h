#pragma once

#include "resources/appearance.h"

#include <QColor>
#include <QFont>

namespace zenvor {

/// The colours that a system gives its applications.
class SystemColors : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QColor label READ label NOTIFY changed)
    Q_PROPERTY(QColor secondaryLabel READ secondaryLabel NOTIFY changed)
    Q_PROPERTY(QColor background READ background NOTIFY changed)
    Q_PROPERTY(QColor secondaryBackground READ secondaryBackground NOTIFY changed)
    Q_PROPERTY(QColor gray READ gray CONSTANT)
    Q_PROPERTY(QColor gray6 READ secondaryBackground NOTIFY changed)
    Q_PROPERTY(QColor blue READ blue NOTIFY changed)
    Q_PROPERTY(QColor chromeMaterial READ chromeMaterial NOTIFY changed)

public:
    SystemColors();

    QColor label() const { return choose(0xff000000, 0xffffffff); }
    QColor secondaryLabel() const { return choose(0x993c3c43, 0x99ebebf5); }
    QColor background() const { return choose(0xffffffff, 0xff000000); }
    QColor secondaryBackground() const { return choose(0xfff2f2f7, 0xff1c1c1e); }
    QColor gray() const { return QColor::fromRgba(0xff8e8e93); }
    QColor blue() const { return choose(0xff007aff, 0xff0a84ff); }
    QColor chromeMaterial() const { return choose(0xc8f7f7f7, 0xc8202124); }

Q_SIGNALS:
    void changed();

private:
    static QColor choose(QRgb light, QRgb dark)
    {
        return QColor::fromRgba(Appearance::shared().isDark() ? dark : light);
    }
};

/// The system's font.
class Fonts : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    /// Whole, so that nothing of the host's fonts or style is inherited. In points.
    Q_INVOKABLE QFont make(int size, int weight) const;
};

} // namespace zenvor
