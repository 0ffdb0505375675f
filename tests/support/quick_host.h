#pragma once

#include <QQmlComponent>
#include <QQuickItem>
#include <QQuickView>
#include <QTest>

namespace zenvor::test {

using namespace Qt::StringLiterals;

/// A host whose window is full of what must not be reached.
class QuickHost
{
public:
    QuickHost()
    {
        view.resize(390, 844);
        view.setResizeMode(QQuickView::SizeRootObjectToView);
        QQmlComponent component(view.engine());
        component.setData(R"(
            import QtQuick
            Rectangle {
                property int reached: 0
                color: "steelblue"
                focus: true
                Keys.onPressed: ++reached
                MouseArea { anchors.fill: parent; hoverEnabled: true; onPressed: parent.reached++; onWheel: parent.reached++ }
                TextInput { objectName: "field"; width: 100; height: 20; text: "" }
                Shortcut { sequence: "Ctrl+K"; context: Qt.ApplicationShortcut; onActivated: parent.reached++ }
            })"_ba,
                          {});
        view.setContent({}, &component, component.create());
        field()->forceActiveFocus();
        view.show();
        view.requestActivate();
    }

    QQuickItem *field() const { return find("field"_L1); }
    int reached() const { return view.rootObject()->property("reached").toInt(); }

    /// The first item of that name that can be seen.
    QQuickItem *find(QLatin1StringView name) const { return find(name, view.contentItem()); }

    void tap(QLatin1StringView name)
    {
        view.grabWindow(); // lays everything out
        auto *item = find(name);
        QVERIFY2(item, name.data());
        const QPointF center = item->mapToScene({item->width() / 2, item->height() / 2});
        QTest::mouseClick(&view, Qt::LeftButton, {}, center.toPoint());
    }

    void type(QStringView text)
    {
        for (const QChar letter : text)
            QTest::keyClick(&view, letter.toLatin1());
    }

    QQuickView view;

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
};

} // namespace zenvor::test
