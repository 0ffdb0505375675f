#pragma once

#include "support/host.h"

#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>

namespace zenvor::test {

class QuickHost final : public Host
{
public:
    using Application = QGuiApplication;

    /// \a qml makes the window.
    explicit QuickHost(const QByteArray &qml = plainWindow())
    {
        QQmlComponent component(&m_engine);
        component.setData(qml, {});
        m_root.reset(component.create());
        if (!m_root)
            qFatal("%s", qPrintable(component.errorString()));
        window()->show();
        window()->requestActivate();
        if (auto *field = object("field"))
            qobject_cast<QQuickItem *>(field)->forceActiveFocus();
    }

    static QByteArray plainWindow()
    {
        return R"(
            import QtQuick
            Window {
                id: root
                property int reached: 0
                width: 390; height: 844
                Rectangle {
                    anchors.fill: parent
                    color: "steelblue"
                    focus: true
                    Keys.onPressed: ++root.reached
                    MouseArea { anchors.fill: parent; hoverEnabled: true; onPressed: ++root.reached; onWheel: ++root.reached }
                    DropArea { anchors.fill: parent; onEntered: ++root.reached; onDropped: ++root.reached }
                    TextInput { objectName: "field"; width: 100; height: 20 }
                    DragHandler { target: null; onActiveChanged: ++root.reached }
                    Shortcut { sequence: "Esc"; context: Qt.ApplicationShortcut; onActivated: ++root.reached }
                    Shortcut { sequence: "Ctrl+K"; context: Qt.ApplicationShortcut; onActivated: ++root.reached }
                }
            })"_ba;
    }

    QQuickWindow *window() const override { return qobject_cast<QQuickWindow *>(m_root.get()); }
    QQuickWindow *scene() const override { return window(); }
    QObject *object(const char *name) const { return m_root->findChild<QObject *>(QLatin1StringView(name)); }

    bool hasFieldFocus() const override { return object("field")->property("activeFocus").toBool(); }
    QString fieldText() const override { return object("field")->property("text").toString(); }
    int reached() const override { return m_root->property("reached").toInt(); }

    std::function<void()> showPageInStack() override
    {
        QQmlComponent component(&m_engine);
        component.setData(R"(
            import QtQuick
            import QtQuick.Templates as T
            T.StackView { anchors.fill: parent; initialItem: Component { Item {} } })",
                          {});
        auto *stack = component.createWithInitialProperties(
            {{u"parent"_s, QVariant::fromValue(window()->contentItem())}});
        stack->setParent(window());
        return [stack] {
            QMetaObject::invokeMethod(stack, "clear");
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        };
    }

private:
    QQmlEngine m_engine;
    std::unique_ptr<QObject> m_root;
};

} // namespace zenvor::test
