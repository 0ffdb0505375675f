#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>

#include <memory>

int answer();

// A host that names the library in QML alone, and links it through a library of its own.
int main(int argc, char **argv)
{
    QGuiApplication application(argc, argv);
    QQmlEngine engine;
    QQmlComponent component(&engine);
    component.setData(
        "import QtQml; import Zenvor; QtObject { Component.onCompleted: Zenvor.configure('token', true) }",
        {});
    const std::unique_ptr<QObject> object(component.create());
    for (const auto &error : component.errors())
        qWarning("%s", qPrintable(error.toString()));
    return object && answer() == 42 ? 0 : 1;
}
