#pragma once

#include <QObject>
#include <QQmlApplicationEngine>
#include <QtQml/qqmlregistration.h>

class QQuickWindow;

/// The app: its views, and the window that shows them.
class Larder
{
public:
    Larder();

    /// Null if the views cannot be loaded, which has then been written to standard error.
    QQuickWindow *open();

private:
    QQmlApplicationEngine m_engine;
};

/// The language of the app, which is also that of the feedback screens.
class Language : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QString code READ code WRITE setCode NOTIFY changed)

public:
    using QObject::QObject;

    /// As "de".
    QString code() const;
    void setCode(const QString &code);

Q_SIGNALS:
    void changed();
};
