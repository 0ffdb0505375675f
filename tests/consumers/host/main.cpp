#include <zenvor/report_service.h>
#include <zenvor/zenvor.h>
#include <zenvor/zenvor_version.h>

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QQuickItem>
#include <QQuickWindow>

namespace {

const QQuickItem *find(const QQuickItem *item, const QString &name)
{
    if (item->objectName() == name)
        return item;
    const auto children = item->childItems();
    for (const auto *child : children) {
        if (const auto *found = find(child, name))
            return found;
    }
    return nullptr;
}

// Whether the dialog opens and has its texts, which the library brings along.
bool opensTheDialog()
{
    QQuickWindow window;
    window.resize(390, 844);
    window.show();
    window.requestActivate();
    const QQuickItem *button = nullptr;
    QElapsedTimer timer;
    for (timer.start(); !button && timer.elapsed() < 10'000; QGuiApplication::processEvents()) {
        if (QGuiApplication::focusWindow() == &window)
            zenvor::Zenvor::shared().present(); // the flow opens once
        button = find(window.contentItem(), QStringLiteral("cancelButton"));
    }
    return button && button->property("text") == QStringLiteral("Cancel");
}

} // namespace

int main(int argc, char **argv)
{
    QGuiApplication application(argc, argv);
    const bool isSet = zenvor::setReportServiceUrl(QUrl(QStringLiteral("https://reports.example")))
        && !zenvor::setReportServiceUrl(QUrl(QStringLiteral("http://reports.example")))
        && QByteArrayView(ZENVOR_VERSION) == "0.2.0";
    // No identifier of the application is set, so that this sends nothing.
    zenvor::Zenvor::shared().configure(QStringLiteral("token"), true);
    return isSet && opensTheDialog() ? 0 : 1;
}
