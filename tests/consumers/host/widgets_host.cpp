#include "open_dialog.h"

#include <zenvor/widgets.h>

#include <QApplication>
#include <QMainWindow>

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    zenvor::Zenvor::shared().configure(QStringLiteral("token"), false);
    QMainWindow window;
    window.show();
    window.activateWindow();
    return zenvor::enableWidgets() && opensTheDialog() ? 0 : 1;
}
