#include "driver/picture_album.h"

#include "driver/failure.h"

namespace driver {

using namespace Qt::StringLiterals;

void PictureAlbum::add(const QString &name, const QImage &picture)
{
    const auto file = u"%1-%2.png"_s.arg(++m_count, 2, 10, QChar(u'0')).arg(name);
    if (!m_folder.mkpath(u"."_s) || !picture.save(m_folder.filePath(file)))
        throw Failure{u"%1 cannot be written to %2."_s.arg(file, m_folder.path())};
}

} // namespace driver
