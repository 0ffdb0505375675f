#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

class QCommandLineParser;

/// Where the feedback of this app goes. A real app has these three in its source.
struct FeedbackOptions
{
    QString service; ///< empty: the one that the library was built for
    QString token; ///< empty: no feedback
    QString bundleId;
};

void addFeedbackOptions(QCommandLineParser &parser);

/// Says in \a error what is wrong with the options, and returns false then.
bool readFeedbackOptions(const QCommandLineParser &parser, FeedbackOptions *options, QString *error);

/// Sets the library up. To be called once there is an application object. Errors as above.
bool setUpFeedback(const FeedbackOptions &options, QString *error);

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
