#include "facade/top_view_controller.h"
#include "support/quick_host.h"
#include "ui/quick_host_views.h"

#include <QGuiApplication>

using namespace zenvor;
using namespace Qt::StringLiterals;

/// The search for a host's top-most view, through what hosts are built of.
class TestQuickHostViews : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void findsTheTopMostView_data();
    void findsTheTopMostView();
};

void TestQuickHostViews::findsTheTopMostView_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("found"); // "scene" for all of the window, empty for nothing
    const auto row = [](const char *name, const char *content, const char *found) {
        QTest::newRow(name) << QByteArray(content) << QString::fromLatin1(found);
    };
    row("no container", "Rectangle { anchors.fill: parent }", "scene");
    row("stack",
        R"(StackView { anchors.fill: parent; initialItem: page; Component.onCompleted: push(detail) })",
        "detail");
    row("empty stack", "StackView { anchors.fill: parent }", "");
    row("empty stack in a corner", "StackView { width: 150; height: 300 }", "scene");
    row("layout of tabs", R"(StackLayout { anchors.fill: parent; currentIndex: 1
        Item { objectName: "first" } Item { objectName: "second" } })",
        "second");
    row("swiped tabs", R"(SwipeView { anchors.fill: parent; currentIndex: 1
        Item { objectName: "first" } Item { objectName: "second" } })",
        "second");
    row("no tabs", R"(SwipeView { objectName: "tabs"; anchors.fill: parent })", "tabs");
    row("stack in tabs, deep in the scene", R"(Item { anchors.fill: parent
        Item { anchors.fill: parent
            StackLayout { anchors.fill: parent
                StackView { initialItem: page } } } })",
        "page");
    row("stack in a page of tabs", R"(SwipeView { anchors.fill: parent
        Item { Loader { anchors.fill: parent; sourceComponent: StackView { initialItem: page } } } })",
        "page");
    row("modal over a stack in tabs", R"(SwipeView { anchors.fill: parent
        StackView { initialItem: page
            Popup { id: upper; objectName: "modal"; modal: true }
            Popup { id: lower; modal: true }
            Popup { id: tip }
            Component.onCompleted: { lower.open(); upper.open(); tip.open() } } })",
        "modal");
    row("modal over an empty stack", R"(StackView { anchors.fill: parent
        Popup { objectName: "modal"; modal: true; visible: true } })",
        "modal");
    row("closed modal", R"(Item { anchors.fill: parent; Popup { objectName: "modal"; modal: true } })",
        "scene");
    row("hidden stack", R"(StackView { anchors.fill: parent; visible: false })", "scene");
}

void TestQuickHostViews::findsTheTopMostView()
{
    QFETCH(const QByteArray, content);
    const test::QuickHost host(R"(
        import QtQuick
        import QtQuick.Controls.Basic
        import QtQuick.Layouts
        ApplicationWindow {
            width: 390; height: 844
            header: ToolBar { height: 40 }
            Component { id: page; Item { objectName: "page" } }
            Component { id: detail; Item { objectName: "detail" } }
        )"_ba + content + '}');
    host.window()->grabWindow(); // lays everything out
    const QuickHostViews views;
    const auto *view = topViewController(views, views.rootView(host.window()));
    const auto name = !view                    ? QString()
        : view == host.window()->contentItem() ? u"scene"_s
                                               : view->objectName();
    QTEST(name, "found");
}

QTEST_MAIN(TestQuickHostViews)

#include "tst_quick_host_views.moc"
