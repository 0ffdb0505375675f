#include <zenvor/widgets.h>

#include "platform/window.h"
#include "widgets/widget_host_views.h"

#include <QApplication>
#include <QThread>
#include <QWidget>

namespace zenvor {

namespace {

QWindow *activeWindow()
{
    const auto *widget = QApplication::activeWindow();
    return widget ? widget->windowHandle() : nullptr;
}

std::optional<QPalette> palette(const QWindow *window)
{
    const auto *widget = widgetOf(window);
    return widget ? std::optional(widget->palette()) : std::nullopt;
}

QImage picture(QWindow *window)
{
    auto *widget = widgetOf(window);
    return widget ? widget->grab().toImage() : QImage();
}

void closePopups()
{
    constexpr int farMoreThanAnyHostHas = 100; // one may open another when it closes
    for (int i = 0; i < farMoreThanAnyHostHas; ++i) {
        auto *popup = QApplication::activePopupWidget();
        if (!popup)
            return;
        popup->close();
    }
}

} // namespace

bool enableWidgets()
{
    const auto *application = qobject_cast<QApplication *>(QCoreApplication::instance());
    if (!application || application->thread() != QThread::currentThread())
        return false;
    static const WidgetHostViews views;
    setWidgetWindows({&activeWindow, &palette, &picture, &closePopups, &views});
    return true;
}

} // namespace zenvor
