#include "driver/feedback_flow.h"

#include "driver/example_host.h"
#include "driver/failure.h"
#include "driver/media_flow.h"
#include "driver/picture_album.h"
#include "driver/screens.h"

#include <QGuiApplication>
#include <QTest>

namespace driver {

using namespace Qt::StringLiterals;

namespace {

constexpr auto dialog = "categoryDialog"_L1;
constexpr auto sheet = "feedbackSheet"_L1;
constexpr auto alert = "alert"_L1;

void fillIn(Screens &screens, QLatin1StringView field, QLatin1StringView text)
{
    screens.tap(field);
    screens.type(text);
    screens.waitUntil(u"%1 holds what was typed"_s.arg(field), [&] { return screens.text(field) == text; });
}

} // namespace

QImage reportBug(ExampleHost &host, Screens &screens, PictureAlbum &album, const QString &look,
                 const FilledForm &form)
{
    const auto keep = [&](QLatin1StringView shown, const QString &name) {
        album.add(look + u'-' + name, screens.picture(shown));
    };
    const QImage before = host.picture();
    album.add(look + u"-app"_s, before);

    QTest::keyClick(host.window(), Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
    screens.waitForScreen(dialog);
    keep(dialog, u"category-dialog"_s);

    screens.tap("reportBugRow"_L1);
    screens.waitForScreen(sheet);
    screens.waitUntilGone(dialog);
    keep(sheet, u"form-empty"_s);

    fillIn(screens, "messageTextView"_L1, form.message);
    screens.tap("occurrenceFrequencyButton"_L1);
    screens.waitUntil(u"the frequencies are shown"_s,
                      [&] { return screens.isShown("occurrenceFrequencyChoice"_L1); });
    keep(sheet, u"frequency-menu"_s);
    screens.tap("occurrenceFrequencyChoice"_L1, form.frequencyIndex);
    screens.waitUntilGone("occurrenceFrequencyChoice"_L1);
    screens.tap("includeContactCheck"_L1);
    fillIn(screens, "emailField"_L1, form.email);
    keep(sheet, u"form-filled"_s);
    if (form.hasMedia)
        attachMedia(screens, album, look);
    if (form.hasDrawing)
        drawOnScreenshot(screens, album, look);

    screens.tap("sendTopButton"_L1);
    screens.waitUntil(u"the form says that it sends"_s,
                      [&] { return screens.isShown("activityIndicator"_L1) || screens.isShown(alert); });
    if (screens.isShown("activityIndicator"_L1))
        keep(sheet, u"sending"_s);

    screens.waitForScreen(alert);
    keep(alert, u"alert"_s);
    if (screens.text("alertTitle"_L1) != "Thank You"_L1)
        throw Failure{
            u"The form says: %1: %2"_s.arg(screens.text("alertTitle"_L1), screens.text("alertMessage"_L1))};
    screens.tap("alertOkButton"_L1);
    screens.waitUntilGone(sheet);
    screens.waitUntil(u"the app has the keyboard again"_s,
                      [&] { return QGuiApplication::focusWindow() == host.window(); });
    return before;
}

} // namespace driver
