#pragma once

#include "support/host.h"

#include <zenvor/widgets.h>

#include <QApplication>
#include <QDragEnterEvent>
#include <QLineEdit>
#include <QMainWindow>
#include <QShortcut>
#include <QStackedWidget>

namespace zenvor::test {

class WidgetHost final : public QObject, public Host
{
public:
    using Application = QApplication;

    WidgetHost()
    {
        enableWidgets();
        m_window.resize(390, 844);
        auto *page = new QWidget;
        page->setAcceptDrops(true);
        page->installEventFilter(this);
        m_field = new QLineEdit(page);
        m_window.setCentralWidget(page);
        auto *shortcut = new QShortcut(QKeySequence(u"Ctrl+K"_s), page);
        shortcut->setContext(Qt::ApplicationShortcut);
        connect(shortcut, &QShortcut::activated, this, [this] { ++m_reached; });
        m_window.show();
        m_window.activateWindow();
        m_field->setFocus();
    }

    QMainWindow &mainWindow() { return m_window; }
    QWindow *window() const override { return m_window.windowHandle(); }
    QQuickWindow *scene() const override
    {
        const auto windows = QGuiApplication::topLevelWindows();
        for (auto *each : windows) {
            auto *quickWindow = qobject_cast<QQuickWindow *>(each);
            if (quickWindow && quickWindow->isVisible())
                return quickWindow;
        }
        return nullptr;
    }

    bool hasFieldFocus() const override { return m_field->hasFocus(); }
    QString fieldText() const override { return m_field->text(); }
    int reached() const override { return m_reached; }

    std::function<void()> showPageInStack() override
    {
        auto *stack = new QStackedWidget;
        auto *page = new QWidget;
        stack->addWidget(page);
        m_window.setCentralWidget(stack);
        return [page] {
            delete page;
        };
    }

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        switch (event->type()) {
        case QEvent::MouseButtonPress:
        case QEvent::Wheel:
        case QEvent::KeyPress:
        case QEvent::DragEnter:
        case QEvent::TouchBegin:
            ++m_reached;
            break;
        default:
            break;
        }
        return false;
    }

private:
    QMainWindow m_window;
    QLineEdit *m_field = nullptr;
    int m_reached = 0;
};

} // namespace zenvor::test
