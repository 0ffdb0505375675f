#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

/// What the views cannot do by "import Zenvor".
class Feedback : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(bool isAvailable READ isAvailable CONSTANT)
    Q_PROPERTY(QString service READ service CONSTANT)

public:
    using QObject::QObject;

    bool isAvailable() const;
    QString service() const;

    /// As if the device had been shaken: for machines that nobody can shake.
    Q_INVOKABLE void shake();
};
