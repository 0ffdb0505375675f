#include "driver/screens.h"

#include "driver/failure.h"

#include <QGuiApplication>
#include <QTest>

namespace driver {

using namespace Qt::StringLiterals;

namespace {

constexpr int limitMs = 10'000;

// The tree of what is drawn: the one of QObject misses what a popup or a window holds.
void collect(QLatin1StringView name, QQuickItem *item, QList<QQuickItem *> *found)
{
    if (!item->isVisible())
        return;
    if (item->objectName() == name)
        found->append(item);
    const auto children = item->childItems();
    for (auto *child : children)
        collect(name, child, found);
}

QPointF centerOf(const QQuickItem *item)
{
    return item->mapToScene({item->width() / 2, item->height() / 2});
}

bool isAtRest(QQuickItem *screen)
{
    for (const QQuickItem *item = screen; item; item = item->parentItem()) {
        if (item->opacity() < 1)
            return false;
    }
    return screen->mapToScene({}) == QPointF();
}

} // namespace

QList<QQuickItem *> Screens::findAll(QLatin1StringView name) const
{
    QList<QQuickItem *> found;
    const auto windows = QGuiApplication::allWindows();
    for (auto *window : windows) {
        auto *quickWindow = qobject_cast<QQuickWindow *>(window);
        if (quickWindow && quickWindow->isVisible())
            collect(name, quickWindow->contentItem(), &found);
    }
    return found;
}

QQuickItem *Screens::item(QLatin1StringView name, int index) const
{
    waitUntil(name + u" is shown"_s, [&] { return findAll(name).size() > index; });
    return findAll(name).at(index);
}

QString Screens::text(QLatin1StringView name) const
{
    const auto found = findAll(name);
    return found.isEmpty() ? QString() : found.constFirst()->property("text").toString();
}

bool Screens::hasSettled() const
{
    QList<QQuickItem *> items;
    const auto windows = QGuiApplication::allWindows();
    for (auto *window : windows) {
        if (auto *quickWindow = qobject_cast<QQuickWindow *>(window))
            items.append(quickWindow->contentItem());
    }
    while (!items.isEmpty()) {
        const auto *item = items.takeLast();
        if (item->inherits("QQuickImage") && item->property("progress").toReal() < 1
            && !item->property("source").toUrl().isEmpty())
            return false;
        items += item->childItems();
    }
    return true;
}

// By turns of the wheel.
void Screens::reveal(QQuickItem *target) const
{
    constexpr int mostTurns = 20;
    auto *window = target->window();
    for (int turns = 0; turns < mostTurns && centerOf(target).y() > window->height(); ++turns) {
        const QPointF middle(window->width() / 2.0, window->height() / 2.0);
        QWheelEvent event(middle, window->mapToGlobal(middle), {}, {0, -120}, {}, {}, Qt::NoScrollPhase,
                          false);
        QCoreApplication::sendEvent(window, &event);
        window->grabWindow(); // lays everything out
        QTest::qWait(20);
    }
}

void Screens::tap(QLatin1StringView name, int index)
{
    item(name, index)->window()->grabWindow(); // lays everything out
    auto *target = item(name, index);
    m_lastTapped = target->window();
    reveal(target);
    const QPointF center = centerOf(target);
    if (!QRectF({}, m_lastTapped->size()).contains(center))
        throw Failure{u"The middle of %1 lies outside of the window."_s.arg(name)};
    if (!target->isEnabled())
        throw Failure{u"%1 cannot be used."_s.arg(name)};
    QTest::mouseClick(m_lastTapped, Qt::LeftButton, {}, center.toPoint());
}

void Screens::draw(QLatin1StringView name, const QList<QPointF> &points)
{
    constexpr int stepsBetween = 10;
    const auto *target = item(name);
    auto *window = target->window();
    const auto place = [target](QPointF point) {
        return target->mapToScene({point.x() * target->width(), point.y() * target->height()}).toPoint();
    };
    QTest::mousePress(window, Qt::LeftButton, {}, place(points.constFirst()));
    for (qsizetype i = 1; i < points.size(); ++i) {
        const QPointF from = points.at(i - 1);
        for (int step = 1; step <= stepsBetween; ++step)
            QTest::mouseMove(window, place(from + (points.at(i) - from) * step / stepsBetween));
    }
    QTest::mouseRelease(window, Qt::LeftButton, {}, place(points.constLast()));
}

void Screens::type(QLatin1StringView text)
{
    for (const char letter : text)
        QTest::keyClick(m_lastTapped, letter);
}

void Screens::waitUntil(const QString &what, const std::function<bool()> &condition) const
{
    if (!QTest::qWaitFor(condition, limitMs))
        throw Failure{u"Waited in vain until %1."_s.arg(what)};
}

void Screens::waitForScreen(QLatin1StringView name) const
{
    waitUntil(name + u" has opened"_s, [&] {
        const auto found = findAll(name);
        return !found.isEmpty() && isAtRest(found.constFirst());
    });
}

void Screens::waitUntilGone(QLatin1StringView name) const
{
    waitUntil(name + u" has gone"_s, [&] { return !isShown(name); });
}

QImage Screens::picture(QLatin1StringView name) const
{
    return item(name)->window()->grabWindow();
}

} // namespace driver
