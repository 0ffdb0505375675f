#pragma once

#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>

#include <memory>

namespace zenvor::bench {

/// A host with some hundred items, in the size of a phone's screen.
class HostWindow
{
public:
    HostWindow()
    {
        QQmlComponent component(&m_engine);
        component.setData(R"(
            import QtQuick
            Window {
                width: 390; height: 844; color: "white"
                ListView {
                    anchors.fill: parent; model: 100; cacheBuffer: 10000
                    delegate: Rectangle {
                        width: 390; height: 40; color: index % 2 ? "white" : "lightsteelblue"
                        Text { anchors.centerIn: parent; text: "Row " + index }
                    }
                }
            })",
                          {});
        m_root.reset(component.create());
        window()->show();
        window()->requestActivate();
    }

    QQuickWindow *window() const { return qobject_cast<QQuickWindow *>(m_root.get()); }

private:
    QQmlEngine m_engine;
    std::unique_ptr<QObject> m_root;
};

} // namespace zenvor::bench
