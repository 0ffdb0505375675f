#include "ui/form_attachments.h"

#include "resources/string_table.h"

namespace zenvor {

using namespace Qt::StringLiterals;

namespace {

QString normalizedScreenshotMimeType(const std::optional<QString> &mimeType)
{
    const auto known = mimeType.value_or(QString()).trimmed().toLower();
    return known == "image/png"_L1 || known == "image/webp"_L1 ? known : u"image/jpeg"_s;
}

} // namespace

int FormAttachments::usedCount() const
{
    return int(additionalAttachments.size()) + (currentScreenshot ? 1 : 0);
}

std::optional<QImage> FormAttachments::screenshotToEncode() const
{
    const bool isFile = currentScreenshotData && !currentScreenshotData->isEmpty();
    return isFile ? std::nullopt : currentScreenshot;
}

void FormAttachments::setEncodedScreenshot(QByteArray jpeg)
{
    currentScreenshotData = std::move(jpeg);
    currentScreenshotMimeType = u"image/jpeg"_s;
}

void FormAttachments::setEditedScreenshot(QImage image)
{
    currentScreenshot = std::move(image);
    currentScreenshotData.reset();
    currentScreenshotMimeType = u"image/jpeg"_s;
}

std::optional<ReportUploadAttachment> FormAttachments::screenshotUpload() const
{
    if (!currentScreenshot || !currentScreenshotData || currentScreenshotData->isEmpty())
        return std::nullopt;
    return ReportUploadAttachment{*currentScreenshotData,
                                  normalizedScreenshotMimeType(currentScreenshotMimeType), u"screenshot"_s};
}

void FormAttachments::applyPickedAttachments(QList<PickedAttachment> picked)
{
    for (auto &[attachment, image] : picked) {
        if (usedCount() >= limit)
            return;
        if (currentScreenshot || !image) {
            additionalAttachments.append(std::move(attachment));
            continue;
        }
        currentScreenshot = std::move(image);
        currentScreenshotData = std::move(attachment.data);
        currentScreenshotMimeType = normalizedScreenshotMimeType(attachment.mimeType);
    }
}

void FormAttachments::removeScreenshot()
{
    currentScreenshot.reset();
    currentScreenshotData.reset();
    currentScreenshotMimeType.reset();
}

void FormAttachments::removeAdditionalAttachment(qsizetype index)
{
    if (index >= 0 && index < additionalAttachments.size())
        additionalAttachments.removeAt(index);
}

QString FormAttachments::helperText() const
{
    const auto helper = localizedString("zenvor_screenshot_helper"_ba,
                                        u"You can edit the screenshot and add photos/videos from gallery."_s);
    if (additionalAttachments.isEmpty())
        return helper;
    return helper + u'\n'
        + localizedString("zenvor_media_extra_selected_with_total"_ba, u"Selected extra media: %d (%d/%d)."_s,
                          {additionalAttachments.size(), usedCount(), limit});
}

QString FormAttachments::addMediaTitle() const
{
    return localizedString("zenvor_add_media_with_count"_ba, u"Add Media (%d/%d)"_s, {usedCount(), limit});
}

} // namespace zenvor
