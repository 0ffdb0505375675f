#pragma once

#include <zenvor/zenvor.h>

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QQuickItem>
#include <QQuickWindow>

inline const QQuickItem *find(const QQuickItem *item, const QString &name)
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

// Whether the dialog opens, in whichever window, and has its texts, which the library brings along.
inline bool opensTheDialog()
{
    QElapsedTimer timer;
    for (timer.start(); timer.elapsed() < 10'000; QGuiApplication::processEvents()) {
        if (QGuiApplication::focusWindow())
            zenvor::Zenvor::shared().present(); // the flow opens once
        const auto windows = QGuiApplication::topLevelWindows();
        for (const auto *window : windows) {
            const auto *scene = qobject_cast<const QQuickWindow *>(window);
            if (const auto *button =
                    scene ? find(scene->contentItem(), QStringLiteral("cancelButton")) : nullptr)
                return button->property("text") == QStringLiteral("Cancel");
        }
    }
    return false;
}
