#pragma once

#include "media/media_list_model.h"
#include "platform/task.h"
#include "platform/view_controller.h"

#include <QUrl>

namespace zenvor {

/// Lets the user choose pictures and videos: on Linux from a grid of our own, elsewhere with what the system
/// has for it.
class MediaPickerViewController : public ViewController
{
    Q_OBJECT
    Q_PROPERTY(QAbstractItemModel *entries READ entries CONSTANT)
    Q_PROPERTY(QVariantList places READ places CONSTANT)
    Q_PROPERTY(QString folder READ folder NOTIFY folderChanged)
    Q_PROPERTY(QString folderName READ folderName NOTIFY folderChanged)
    Q_PROPERTY(bool canGoUp READ canGoUp NOTIFY folderChanged)
    Q_PROPERTY(QString message READ message NOTIFY folderChanged)
    Q_PROPERTY(int selectedCount READ selectedCount NOTIFY selectionChanged)
    Q_PROPERTY(bool isFull READ isFull NOTIFY selectionChanged)
    Q_PROPERTY(int selectionLimit MEMBER m_selectionLimit CONSTANT)

public:
    /// \a didFinishPicking is called once, with what was chosen in the order of choosing: at most
    /// \a selectionLimit files, none if the user has cancelled.
    MediaPickerViewController(int selectionLimit, std::function<void(QList<QUrl>)> didFinishPicking);

    QString viewName() const override;

    QAbstractItemModel *entries() { return &m_entries; }
    /// The folders to begin with, as maps of title and path.
    QVariantList places() const;
    QString folder() const { return m_folder; }
    QString folderName() const;
    bool canGoUp() const;
    /// Why there is nothing to see; empty while there is, or may be.
    QString message() const { return m_message; }
    int selectedCount() const { return int(m_entries.selected().size()); }
    bool isFull() const { return selectedCount() >= m_selectionLimit && m_selectionLimit > 1; }

    /// Shows the first folder. To be called when the view is there.
    Q_INVOKABLE void start();
    Q_INVOKABLE void open(const QString &folder);
    Q_INVOKABLE void goUp();
    /// Opens the folder or chooses the file in \a row, or does not choose it any more.
    Q_INVOKABLE void entryTapped(int row);
    Q_INVOKABLE void doneTapped();
    Q_INVOKABLE void cancelTapped();
    /// In a dialog of the system, beside what is chosen here.
    Q_INVOKABLE void filesChosen(const QList<QUrl> &files);
    Q_INVOKABLE void leave() override { cancelTapped(); }

Q_SIGNALS:
    void folderChanged();
    void selectionChanged();

private:
    static Task<> read(std::weak_ptr<ViewController> picker, QString folder);
    void show(const MediaFolder &contents);
    void finish(QList<QUrl> results);

    const int m_selectionLimit;
    std::function<void(QList<QUrl>)> m_didFinishPicking;
    MediaListModel m_entries;
    QString m_folder;
    QString m_message;
};

} // namespace zenvor
