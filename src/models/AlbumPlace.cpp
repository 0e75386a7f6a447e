// SPDX-License-Identifier: GPL-3.0-or-later
#include "AlbumPlace.h"

QString AlbumPlace::pathPart(const QString& text, const QString& fallback)
{
    QString part = text;
    part.replace(u'/', u'-').remove(QChar(0));
    part = part.simplified();
    while (part.startsWith(u'.'))
        part.remove(0, 1);
    part = part.left(150).trimmed();
    return part.isEmpty() ? fallback : part;
}

QString AlbumPlace::folderName() const
{
    const QString name = albumArtist.isEmpty() ? album : albumArtist + u" - " + album;
    return pathPart(name, QStringLiteral("Album"));
}

QString AlbumPlace::fileName(const QString& title, const QString& extension) const
{
    const int width = std::max(2, int(QString::number(trackCount).size()));
    const QString number = QString::number(trackNumber).rightJustified(width, u'0');
    return number + u' ' + pathPart(title, QStringLiteral("Track")) + u'.' + extension;
}
