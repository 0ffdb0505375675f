#include "media/media_picker_view_controller.h"

#include "platform/awaitable_callback.h"
#include "resources/string_table.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#include <utility>

namespace zenvor {

using namespace Qt::StringLiterals;

namespace {

Task<MediaFolder> readHere(QString folder)
{
    co_return MediaFolder::read(folder);
}

QString place(QStandardPaths::StandardLocation location)
{
    return QStandardPaths::writableLocation(location);
}

// Where there is something, if anywhere.
QString firstFolder()
{
    for (const auto location : {QStandardPaths::PicturesLocation, QStandardPaths::MoviesLocation}) {
        if (QFileInfo(place(location)).isDir())
            return place(location);
    }
    return place(QStandardPaths::HomeLocation);
}

} // namespace

MediaPickerViewController::MediaPickerViewController(int selectionLimit,
                                                     std::function<void(QList<QUrl>)> didFinishPicking)
    : m_selectionLimit(selectionLimit)
    , m_didFinishPicking(std::move(didFinishPicking))
    , m_entries(selectionLimit)
{
}

QString MediaPickerViewController::viewName() const
{
#if defined(Q_OS_ANDROID) || defined(Q_OS_IOS) || defined(Q_OS_MACOS) || defined(Q_OS_WIN)
    return u"SystemMediaPicker"_s;
#else
    return u"MediaPicker"_s;
#endif
}

QVariantList MediaPickerViewController::places() const
{
    const std::pair<QString, QString> all[] = {
        {localizedString("zenvor_pictures"_ba, u"Pictures"_s), place(QStandardPaths::PicturesLocation)},
        {localizedString("zenvor_movies"_ba, u"Videos"_s), place(QStandardPaths::MoviesLocation)},
        {localizedString("zenvor_home"_ba, u"Home"_s), place(QStandardPaths::HomeLocation)}};
    QVariantList maps;
    for (const auto &[title, path] : all)
        maps.append(QVariantMap{{u"title"_s, title}, {u"path"_s, path}});
    return maps;
}

QString MediaPickerViewController::folderName() const
{
    const auto name = QFileInfo(m_folder).fileName();
    return name.isEmpty() ? m_folder : name;
}

bool MediaPickerViewController::canGoUp() const
{
    return !m_folder.isEmpty() && !QDir(m_folder).isRoot();
}

void MediaPickerViewController::start()
{
    open(firstFolder());
}

void MediaPickerViewController::open(const QString &folder)
{
    m_folder = QDir::cleanPath(folder);
    m_message.clear();
    m_entries.setEntries({});
    Q_EMIT folderChanged();
    read(weak_from_this(), m_folder); // detached: a folder that cannot be read says so
}

Task<> MediaPickerViewController::read(std::weak_ptr<ViewController> picker, QString folder)
{
    const auto reading = [folder] {
        return readHere(folder);
    };
    MediaFolder contents;
    try {
        contents = co_await runOn(makeBackgroundExecutor(), reading);
    } catch (const std::exception &) {
        contents = {};
    }
    const auto alive = std::static_pointer_cast<MediaPickerViewController>(picker.lock());
    if (alive && alive->m_folder == folder) // the user may have gone on
        alive->show(contents);
}

void MediaPickerViewController::show(const MediaFolder &contents)
{
    if (!contents.isReadable)
        m_message = localizedString("zenvor_folder_unreadable"_ba, u"This folder cannot be opened."_s);
    else if (contents.entries.isEmpty())
        m_message = localizedString("zenvor_folder_empty"_ba, u"No pictures or videos here."_s);
    m_entries.setEntries(contents.entries);
    Q_EMIT folderChanged();
}

void MediaPickerViewController::goUp()
{
    if (canGoUp())
        open(QFileInfo(m_folder).path());
}

void MediaPickerViewController::entryTapped(int row)
{
    const auto *entry = m_entries.entry(row);
    if (!entry)
        return;
    if (entry->isFolder) {
        open(QString(entry->path)); // the entry goes
        return;
    }
    m_entries.toggle(row);
    Q_EMIT selectionChanged();
}

void MediaPickerViewController::doneTapped()
{
    filesChosen({});
}

void MediaPickerViewController::cancelTapped()
{
    finish({});
}

void MediaPickerViewController::filesChosen(const QList<QUrl> &files)
{
    QList<QUrl> results;
    for (const auto &path : m_entries.selected())
        results.append(QUrl::fromLocalFile(path));
    results += files;
    finish(results.first(std::min<qsizetype>(results.size(), m_selectionLimit)));
}

void MediaPickerViewController::finish(QList<QUrl> results)
{
    dismiss(true, {});
    if (const auto didFinishPicking = std::exchange(m_didFinishPicking, nullptr))
        didFinishPicking(std::move(results));
}

} // namespace zenvor
