#include "driver/inbox.h"

#include "driver/failure.h"
#include "driver/media_flow.h"

#include <QFile>
#include <QJsonDocument>

#include <algorithm>
#include <cstdlib>

namespace driver {

using namespace Qt::StringLiterals;

namespace {

QString shown(const QJsonValue &value)
{
    const auto json = QJsonDocument(QJsonObject{{u"v"_s, value}}).toJson(QJsonDocument::Compact);
    return value.isUndefined() ? u"nothing"_s : QString::fromUtf8(json.mid(5, json.size() - 6));
}

QJsonObject readReport(const QDir &folder)
{
    QFile file(folder.filePath(u"report.json"_s));
    if (!file.open(QIODevice::ReadOnly))
        throw Failure{u"%1: %2"_s.arg(file.fileName(), file.errorString())};
    return QJsonDocument::fromJson(file.readAll()).object();
}

/// How far the pixels of pictures of one size are apart, on average, from 0 to 255.
double distance(const QImage &one, const QImage &other)
{
    const QImage a = one.convertToFormat(QImage::Format_RGB888);
    const QImage b = other.convertToFormat(QImage::Format_RGB888);
    const qsizetype lineBytes = qsizetype(a.width()) * 3;
    double sum = 0;
    for (int y = 0; y < a.height(); ++y) {
        const uchar *lineA = a.constScanLine(y);
        const uchar *lineB = b.constScanLine(y);
        for (qsizetype i = 0; i < lineBytes; ++i)
            sum += std::abs(lineA[i] - lineB[i]);
    }
    return sum / double(lineBytes * a.height());
}

QString size(const QImage &image)
{
    return u"%1 x %2"_s.arg(image.width()).arg(image.height());
}

// Empty if it is as it has to be.
QString faultOfScreenshot(const QDir &folder, const QImage &host)
{
    constexpr double greatestLossOfJpeg = 8;
    const auto files = folder.entryList({u"1-screenshot.*"_s}, QDir::Files);
    if (files.size() != 1)
        return u"%1 files that are screenshots, not one"_s.arg(files.size());
    const QImage screenshot(folder.filePath(files.constFirst()));
    if (screenshot.isNull())
        return u"%1 is no picture"_s.arg(files.constFirst());
    if (screenshot.size() != host.size())
        return u"the screenshot is %1, the window %2"_s.arg(size(screenshot), size(host));
    const double apart = distance(screenshot, host);
    if (apart > greatestLossOfJpeg)
        return u"the screenshot does not show the app: its pixels are %1 off on average"_s.arg(apart);
    return {};
}

} // namespace

Inbox::Inbox(const QDir &folder) : m_reports(folder.filePath(u"reports"_s)), m_known(ids())
{
}

QStringList Inbox::ids() const
{
    return QDir(m_reports.path()).entryList(QDir::Dirs | QDir::NoDotAndDotDot); // not what was listed before
}

QDir Inbox::takeNew()
{
    QStringList added = ids();
    added.removeIf([this](const QString &id) { return m_known.contains(id); });
    if (added.size() != 1)
        throw Failure{u"%1 reports have arrived in %2, not one."_s.arg(added.size()).arg(m_reports.path())};
    m_known += added;
    return QDir(m_reports.filePath(added.constFirst()));
}

void compare(const QDir &report, const FilledForm &form, const QImage &host)
{
    const QJsonObject expected{
        {u"message"_s, form.message}, {u"category"_s, u"bug"_s},  {u"occurrence_frequency"_s, form.frequency},
        {u"email"_s, form.email},     {u"allow_contact"_s, true},
    };
    const auto received = readReport(report);
    QStringList faults;
    for (auto it = expected.begin(); it != expected.end(); ++it) {
        if (received[it.key()] != it.value())
            faults += u"%1 is %2, and was %3 in the form"_s.arg(it.key(), shown(received[it.key()]),
                                                                shown(it.value()));
    }
    for (const auto &fault : {form.hasDrawing ? faultOfDrawing(report) : faultOfScreenshot(report, host),
                              form.hasMedia ? faultOfMedia(report) : QString()}) {
        if (!fault.isEmpty())
            faults += fault;
    }
    if (!faults.isEmpty())
        throw Failure{
            u"The report in %1 is not what was sent:\n  %2."_s.arg(report.path(), faults.join(u"\n  "_s))};
}

} // namespace driver
