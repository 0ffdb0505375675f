#pragma once

#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>

#include <zenvor/zenvor.h>

namespace zenvor::test {

using namespace Qt::StringLiterals;

/// A host with one window, and what its user does there.
class QuickHost
{
public:
    /// \a qml makes a window, here one that is full of what must not be reached.
    explicit QuickHost(const QByteArray &qml = plainWindow())
    {
        QQmlComponent component(&m_engine);
        component.setData(qml, {});
        m_root.reset(component.create());
        if (!m_root)
            qFatal("%s", qPrintable(component.errorString()));
        window()->show();
        window()->requestActivate();
        if (auto *item = field())
            item->forceActiveFocus();
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
                    Shortcut { sequence: "Ctrl+K"; context: Qt.ApplicationShortcut; onActivated: ++root.reached }
                }
            })"_ba;
    }

    QQuickWindow *window() const { return qobject_cast<QQuickWindow *>(m_root.get()); }
    QObject *object(const char *name) const { return m_root->findChild<QObject *>(QLatin1StringView(name)); }
    QQuickItem *field() const { return find("field"_L1); }
    int reached() const { return m_root->property("reached").toInt(); }

    /// The first item of that name that can be seen.
    QQuickItem *find(QLatin1StringView name) const { return find(name, window()->contentItem()); }
    bool isShown(QLatin1StringView name) const { return find(name); }
    QString textOf(QLatin1StringView name) const
    {
        const auto *item = find(name);
        return item ? item->property("text").toString() : QString();
    }
    /// Where the item is in the window, once everything is laid out.
    QRectF rectOf(QLatin1StringView name) const
    {
        window()->grabWindow();
        const auto *item = find(name);
        return item ? item->mapRectToScene({0, 0, item->width(), item->height()}) : QRectF();
    }

    void tap(QLatin1StringView name)
    {
        const QRectF rect = rectOf(name);
        QVERIFY2(rect.isValid(), name.data());
        QTest::mouseClick(window(), Qt::LeftButton, {}, rect.center().toPoint());
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(window(), key, modifiers);
    }
    void type(QStringView text)
    {
        for (const QChar letter : text)
            QTest::keyClick(window(), letter.toLatin1());
    }

    /// Opens the dialog by the public operation, and waits until it stands.
    void openDialog()
    {
        Zenvor::shared().present();
        QTRY_VERIFY(isShown("categoryDialog"_L1));
        QTRY_COMPARE(find("categoryDialog"_L1)->parentItem()->opacity(), 1.0);
    }
    /// Opens the form by way of the dialog, and waits until it stands.
    void openForm(QLatin1StringView row)
    {
        openDialog();
        tap(row);
        QTRY_VERIFY(isShown("feedbackSheet"_L1));
        QTRY_COMPARE(find("feedbackSheet"_L1)->mapToScene({}), QPointF());
    }

private:
    static QQuickItem *find(QLatin1StringView name, QQuickItem *item)
    {
        if (item->objectName() == name && item->isVisible())
            return item;
        const auto children = item->childItems();
        for (auto *child : children) {
            if (auto *found = find(name, child))
                return found;
        }
        return nullptr;
    }

    QQmlEngine m_engine;
    std::unique_ptr<QObject> m_root;
};

} // namespace zenvor::test
