#include "driver/media_flow.h"

#include "driver/failure.h"
#include "driver/picture_album.h"
#include "driver/screens.h"

#include <QFile>
#include <QImage>
#include <QStandardPaths>

#include <algorithm>

namespace driver {

using namespace Qt::StringLiterals;

namespace {

constexpr auto sheet = "feedbackSheet"_L1;
constexpr auto picker = "mediaPicker"_L1;
constexpr auto player = "videoPlayer"_L1;
constexpr auto editor = "screenshotEditor"_L1;
constexpr int fileCount = 3;

// The newest first, as the picker shows them.
QFileInfoList files()
{
    return QDir(QStandardPaths::writableLocation(QStandardPaths::PicturesLocation))
        .entryInfoList(QDir::Files, QDir::Time);
}

QByteArray contents(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw Failure{u"%1: %2"_s.arg(path, file.errorString())};
    return file.readAll();
}

bool isImageShown(const Screens &screens, QLatin1StringView name)
{
    const auto items = screens.findAll(name);
    return !items.isEmpty() && !items.constLast()->property("image").value<QImage>().isNull();
}

void choose(Screens &screens, PictureAlbum &album, const QString &look)
{
    screens.tap("addMediaButton"_L1);
    screens.waitForScreen(picker);
    screens.waitUntil(u"the pictures and videos are listed"_s,
                      [&] { return screens.findAll("mediaPickerItem"_L1).size() == fileCount; });
    for (int i = 0; i < fileCount; ++i)
        screens.tap("mediaPickerItem"_L1, i);
    screens.waitUntil(u"the thumbnails are shown"_s, [&] { return screens.hasSettled(); });
    album.add(look + u"-picker"_s, screens.picture(picker));
    screens.tap("mediaPickerDone"_L1);
    screens.waitUntilGone(picker);
    screens.waitUntil(u"there is a card for each file"_s,
                      [&] { return screens.findAll("mediaCard"_L1).size() == fileCount; });
}

int indexOfPlayButton(const Screens &screens)
{
    const auto buttons = screens.findAll("mediaCardActionButton"_L1);
    const auto found = std::find_if(buttons.cbegin(), buttons.cend(), [](const QQuickItem *button) {
        return button->property("symbol") == u"play.fill"_s;
    });
    return int(found - buttons.cbegin());
}

void watch(Screens &screens, PictureAlbum &album, const QString &look)
{
    screens.tap("mediaCardActionButton"_L1, indexOfPlayButton(screens));
    screens.waitForScreen(player);
    screens.waitUntil(u"the video plays"_s, [&] { return isImageShown(screens, "videoPicture"_L1); });
    album.add(look + u"-player"_s, screens.picture(player));
    screens.tap("videoPlayerClose"_L1);
    screens.waitUntilGone(player);
}

} // namespace

void attachMedia(Screens &screens, PictureAlbum &album, const QString &look)
{
    choose(screens, album, look);
    watch(screens, album, look);
    album.add(look + u"-form-media"_s, screens.picture(sheet));
    screens.tap("mediaCardRemoveButton"_L1);
    screens.waitUntil(u"its card is gone"_s,
                      [&] { return screens.findAll("mediaCard"_L1).size() == fileCount - 1; });
}

void drawOnScreenshot(Screens &screens, PictureAlbum &album, const QString &look)
{
    screens.tap("editOverlayButton"_L1);
    screens.waitForScreen(editor);
    screens.draw("canvasView"_L1, {{0.2, 0.35}, {0.5, 0.28}, {0.8, 0.35}, {0.5, 0.42}, {0.2, 0.35}});
    screens.tap("markerTool"_L1);
    screens.draw("canvasView"_L1, {{0.25, 0.55}, {0.75, 0.55}});
    album.add(look + u"-editor"_s, screens.picture(editor));
    screens.tap("saveButton"_L1);
    screens.waitUntilGone(editor);
    album.add(look + u"-form-drawn"_s, screens.picture(sheet));
}

QString faultOfDrawing(const QDir &report)
{
    const auto files = report.entryList({u"1-screenshot.*"_s}, QDir::Files);
    const QImage image(report.filePath(files.value(0)));
    constexpr int leastInk = 500;
    int ink = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor color = image.pixelColor(x, y);
            ink += color.red() > 200 && color.green() < 110 && color.blue() < 110;
        }
    }
    return ink > leastInk ? QString() : u"%1 pixels of ink on the screenshot"_s.arg(ink);
}

QString faultOfMedia(const QDir &report)
{
    const auto sent = report.entryInfoList({u"[2-9]-*"_s}, QDir::Files, QDir::Name);
    const auto kept = files().sliced(1);
    if (sent.size() != kept.size())
        return u"%1 pictures and videos, not %2"_s.arg(sent.size()).arg(kept.size());
    for (qsizetype i = 0; i < sent.size(); ++i) {
        if (contents(sent.at(i).filePath()) != contents(kept.at(i).filePath()))
            return u"%1 is not %2"_s.arg(sent.at(i).fileName(), kept.at(i).fileName());
    }
    return {};
}

} // namespace driver
