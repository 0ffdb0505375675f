#include "sandbox/report_markup.h"

#include "sandbox/page_template.h"
#include "sandbox/report_store.h"

#include <QLocale>
#include <QUrl>

namespace zenvor::sandbox {

using namespace Qt::StringLiterals;

namespace {

// Beyond this, only report.json has it all: a page has to stay one that can be read.
constexpr qsizetype shownText = 20'000;
// A longer text is folded at first.
constexpr qsizetype unfoldedText = 1000;
constexpr qsizetype unfoldedLines = 14;

QString text(const QJsonValue &value)
{
    return value.toString().toHtmlEscaped();
}

QString longText(const QString &whole)
{
    if (whole.size() <= shownText)
        return whole.toHtmlEscaped();
    const bool splitsCharacter = whole.at(shownText - 1).isHighSurrogate();
    return whole.left(shownText - (splitsCharacter ? 1 : 0)).toHtmlEscaped()
        + u"…\n\n(The whole text is in report.json.)"_s;
}

QString moment(const QDateTime &time)
{
    const QLocale english(QLocale::English, QLocale::UnitedKingdom);
    return english.toString(time.toLocalTime(), u"d MMM yyyy, HH:mm"_s);
}

QString timeElement(const QDateTime &time)
{
    const QString utc = time.toUTC().toString(Qt::ISODate);
    return u"<time datetime=\"%1\" title=\"%1\">%2</time>"_s.arg(utc, moment(time));
}

QString happened(const QJsonObject &report)
{
    const QString said = report.value("occurred_at"_L1).toString();
    const QDateTime time = QDateTime::fromString(said, Qt::ISODate);
    return time.isValid() ? timeElement(time) : said.toHtmlEscaped();
}

/// A name and what it stands for; nothing where there is nothing to say.
QString fact(const QString &name, const QString &markup)
{
    return markup.isEmpty() ? QString() : u"<div><dt>%1</dt><dd>%2</dd></div>\n"_s.arg(name, markup);
}

QString frequency(const QJsonObject &report)
{
    QString words = report.value("occurrence_frequency"_L1).toString().replace(u'_', u' ');
    if (!words.isEmpty())
        words[0] = words.at(0).toUpper();
    return fact(u"How often"_s, words.toHtmlEscaped());
}

QString steps(const QJsonObject &report)
{
    const QString told = report.value("steps"_L1).toString();
    if (told.isEmpty())
        return {};
    return u"<div class=\"steps\">\n<h3>Steps</h3>\n<p dir=\"auto\">%1</p>\n</div>"_s.arg(longText(told));
}

QString contact(const QJsonObject &report)
{
    const bool isAllowed = report.value("allow_contact"_L1).toBool();
    const QString address = report.value("email"_L1).toString();
    if (address.isEmpty())
        return isAllowed ? u"May be contacted, but gave no address"_s : u"Does not want to be contacted"_s;
    const QString link = u"<a href=\"mailto:%1\">%2</a>"_s.arg(
        QString::fromLatin1(QUrl::toPercentEncoding(address, "@")), address.toHtmlEscaped());
    return (isAllowed ? u"May be contacted: "_s : u"Does not want to be contacted, but gave an address: "_s)
        + link;
}

QString attachment(const StoredAttachment &file, const QString &folder, qsizetype number)
{
    const QString link = (folder + u'/' + file.fileName).toHtmlEscaped();
    const QString size = QLocale::c().formattedDataSize(file.bytes, 1, QLocale::DataSizeSIFormat);
    const QString caption =
        u"<a class=\"file\" href=\"%1\" target=\"_blank\" rel=\"noopener\">"
        "<span>%2</span><span>%3</span><span class=\"unseen\"> (opens in a new tab)</span></a>"_s.arg(
            link, file.fileName.toHtmlEscaped(), size);
    QString shown;
    if (file.mimeType.startsWith("image/"_L1))
        shown =
            u"<a class=\"picture\" href=\"%1\" target=\"_blank\" rel=\"noopener\">"
            "<img src=\"%1\" alt=\"Attachment %2, a picture: open it in full\" loading=\"lazy\"></a>"_s.arg(
                link, QString::number(number));
    else if (file.mimeType.startsWith("video/"_L1))
        shown = u"<video src=\"%1\" controls preload=\"metadata\" playsinline "
                "aria-label=\"Attachment %2, a video\"></video>"_s.arg(link, QString::number(number));
    return u"<li>%1%2</li>\n"_s.arg(shown, caption);
}

QString attachments(const StoredReport &report, const QString &folder)
{
    if (report.attachments.isEmpty())
        return {};
    QString items;
    for (qsizetype i = 0; i < report.attachments.size(); ++i)
        items += attachment(report.attachments.at(i), folder, i + 1);
    return u"<ul class=\"attachments\" aria-label=\"Attachments\">\n%1</ul>"_s.arg(items);
}

QString pair(const QJsonValue &first, const QString &between, const QJsonValue &second)
{
    return (first.toString() + between + second.toString()).trimmed().toHtmlEscaped();
}

QString summary(const QJsonObject &app, const QJsonObject &device)
{
    return pair(app.value("bundle_id"_L1), u" "_s, app.value("version"_L1)) + u" · "_s
        + text(device.value("model"_L1)) + u" · "_s
        + pair(device.value("os_name"_L1), u" "_s, device.value("os_version"_L1));
}

QString facts(const QJsonObject &app, const QJsonObject &device)
{
    QString screen;
    if (device.contains("screen_width"_L1))
        screen = u"%1 × %2"_s.arg(device.value("screen_width"_L1).toDouble())
                     .arg(device.value("screen_height"_L1).toDouble());
    return fact(u"App"_s, text(app.value("bundle_id"_L1))) + fact(u"Version"_s, text(app.value("version"_L1)))
        + fact(u"Build"_s, text(app.value("build"_L1))) + fact(u"Model"_s, text(device.value("model"_L1)))
        + fact(u"Machine"_s, text(device.value("machine"_L1)))
        + fact(u"System"_s, pair(device.value("os_name"_L1), u" "_s, device.value("os_version"_L1)))
        + fact(u"Screen"_s, screen) + fact(u"Appearance"_s, text(device.value("interface_style"_L1)))
        + fact(u"Locale"_s, text(device.value("locale"_L1)))
        + fact(u"Time zone"_s, text(device.value("time_zone"_L1)))
        + fact(u"Device identifier"_s, text(device.value("identifier_for_vendor"_L1)));
}

/// What unfolds a text that is too long to be read in passing.
QString unfolding(const QString &message)
{
    if (message.size() <= unfoldedText && message.count(u'\n') < unfoldedLines)
        return {};
    return u"<details class=\"more\">\n<summary><span class=\"closed\">Show the whole text</span>"
           "<span class=\"open\">Show less</span></summary>\n</details>"_s;
}

} // namespace

QString reportMarkup(const StoredReport &report)
{
    const QJsonObject &body = report.body;
    const QJsonObject app = body.value("app"_L1).toObject();
    const QJsonObject device = body.value("device"_L1).toObject();
    const QString folder = u"/sandbox/reports/"_s + report.id.toHtmlEscaped();
    const QString message = body.value("message"_L1).toString();
    const bool isBug = body.value("category"_L1) == "bug"_L1;
    return filledTemplate(u"report.html"_s,
                          {{u"anchor"_s, report.id.toHtmlEscaped()},
                           {u"kind"_s, isBug ? u"bug"_s : u"feedback"_s},
                           {u"category"_s, isBug ? u"Bug"_s : u"Feedback"_s},
                           {u"received"_s, moment(report.receivedAt)},
                           {u"received-time"_s, timeElement(report.receivedAt)},
                           {u"happened-time"_s, happened(body)},
                           {u"frequency"_s, frequency(body)},
                           {u"message"_s, longText(message)},
                           {u"message-more"_s, unfolding(message)},
                           {u"steps"_s, steps(body)},
                           {u"attachments"_s, attachments(report, folder)},
                           {u"contact"_s, contact(body)},
                           {u"summary"_s, summary(app, device)},
                           {u"facts"_s, facts(app, device)},
                           {u"folder"_s, folder}});
}

} // namespace zenvor::sandbox
