// SPDX-License-Identifier: GPL-3.0-or-later
#include "CoverArt.h"

#include <QBuffer>
#include <QFileInfo>
#include <QImage>
#include <QImageReader>

namespace CoverArt {

QByteArray fromThumbnail(const QString& imagePath, bool square)
{
    QImageReader reader(imagePath);
    // A thumbnail is a few hundred pixels; anything far larger is not one to decode whole.
    reader.setAllocationLimit(256);
    QImage image = reader.read();
    if (image.isNull())
        return {};
    if (square) {
        const int side = std::min(image.width(), image.height());
        image = image.copy((image.width() - side) / 2, (image.height() - side) / 2, side, side);
    }
    if (std::max(image.width(), image.height()) > kMaxSide)
        image = image.scaled(kMaxSide, kMaxSide, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    QByteArray jpeg;
    QBuffer buffer(&jpeg);
    buffer.open(QIODevice::WriteOnly);
    if (!image.convertToFormat(QImage::Format_RGB32).save(&buffer, "JPEG", 90))
        return {};
    return jpeg;
}

QString thumbnailBeside(const QString& audioPath)
{
    const QFileInfo audio(audioPath);
    const QString stem = audio.path() + u'/' + audio.completeBaseName() + u'.';
    for (const char* extension : {"jpg", "jpeg", "webp", "png"}) {
        const QString candidate = stem + QLatin1StringView(extension);
        if (QFileInfo::exists(candidate))
            return candidate;
    }
    return {};
}

} // namespace CoverArt
