#pragma once

#include "platform/view_controller.h"

namespace zenvor {

/// Tells the user something, and goes at "OK".
class AlertViewController : public ViewController
{
    Q_OBJECT
    Q_PROPERTY(QString title MEMBER m_title CONSTANT)
    Q_PROPERTY(QString message MEMBER m_message CONSTANT)

public:
    /// \a onOk is called when the alert is gone.
    AlertViewController(QString title, QString message, std::function<void()> onOk)
        : m_title(std::move(title))
        , m_message(std::move(message))
        , m_onOk(std::move(onOk))
    {
    }

    QString viewName() const override { return QStringLiteral("Alert"); }
    const QString &message() const { return m_message; }
    const QString &title() const { return m_title; }

    Q_INVOKABLE void okTapped() { dismiss(true, m_onOk); }
    Q_INVOKABLE void leave() override { okTapped(); }

private:
    QString m_title;
    QString m_message;
    std::function<void()> m_onOk;
};

} // namespace zenvor
