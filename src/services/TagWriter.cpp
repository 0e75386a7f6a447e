// SPDX-License-Identifier: GPL-3.0-or-later
#include "TagWriter.h"

#include <QFile>
#include <taglib/attachedpictureframe.h>
#include <taglib/flacfile.h>
#include <taglib/flacpicture.h>
#include <taglib/id3v2tag.h>
#include <taglib/mp4file.h>
#include <taglib/mp4tag.h>
#include <taglib/mpegfile.h>
#include <taglib/opusfile.h>
#include <taglib/tpropertymap.h>
#include <taglib/xiphcomment.h>

namespace {

TagLib::String text(const QString& value)
{
    return TagLib::String(value.toUtf8().constData(), TagLib::String::UTF8);
}

void put(TagLib::PropertyMap& map, const char* key, const QString& value)
{
    if (!value.isEmpty())
        map.replace(key, TagLib::StringList(text(value)));
}

// ReplayGain as Vorbis comments, ID3v2 TXXX frames (TagLib makes them of keys it has no frame
// for) and, in Opus, R128 gains relative to -23 LUFS. MP4 takes them as items of its own.
void putLoudness(TagLib::PropertyMap& map, const std::optional<Loudness>& loudness,
                 const char* gainKey, const char* peakKey, const char* opusKey, bool opus)
{
    if (!loudness)
        return;
    if (opus) {
        put(map, opusKey, QString::number(loudness->r128Gain()));
        return;
    }
    put(map, gainKey, Loudness::gainText(loudness->gain()));
    put(map, peakKey, Loudness::peakText(loudness->peak()));
}

// Xiph comments count a track and the total apart; ID3v2 and MP4 read "3/12".
TagLib::PropertyMap merged(TagLib::PropertyMap map, const MusicTags& tags, bool totalApart,
                           bool opus = false)
{
    put(map, "TITLE", tags.title);
    put(map, "ARTIST", tags.artist);
    put(map, "ALBUM", tags.album);
    put(map, "ALBUMARTIST", tags.albumArtist);
    if (tags.trackNumber > 0) {
        QString number = QString::number(tags.trackNumber);
        if (tags.trackCount > 0 && !totalApart)
            number += u'/' + QString::number(tags.trackCount);
        put(map, "TRACKNUMBER", number);
        if (tags.trackCount > 0 && totalApart)
            put(map, "TRACKTOTAL", QString::number(tags.trackCount));
    }
    if (tags.year > 0)
        put(map, "DATE", QString::number(tags.year));
    putLoudness(map, tags.trackLoudness, "REPLAYGAIN_TRACK_GAIN", "REPLAYGAIN_TRACK_PEAK",
                "R128_TRACK_GAIN", opus);
    putLoudness(map, tags.albumLoudness, "REPLAYGAIN_ALBUM_GAIN", "REPLAYGAIN_ALBUM_PEAK",
                "R128_ALBUM_GAIN", opus);
    return map;
}

TagLib::ByteVector bytes(const QByteArray& data)
{
    return TagLib::ByteVector(data.constData(), static_cast<unsigned int>(data.size()));
}

TagLib::FLAC::Picture* flacPicture(const QByteArray& jpeg)
{
    auto* picture = new TagLib::FLAC::Picture;
    picture->setType(TagLib::FLAC::Picture::FrontCover);
    picture->setMimeType("image/jpeg");
    picture->setData(bytes(jpeg));
    return picture;
}

bool writeMp3(const QByteArray& path, const std::optional<MusicTags>& tags, const QByteArray& jpeg)
{
    TagLib::MPEG::File file(path.constData(), false);
    if (!file.isValid())
        return false;
    if (tags)
        file.setProperties(merged(file.properties(), *tags, false));
    if (!jpeg.isEmpty()) {
        TagLib::ID3v2::Tag* id3 = file.ID3v2Tag(true);
        id3->removeFrames("APIC");
        auto* frame = new TagLib::ID3v2::AttachedPictureFrame;
        frame->setMimeType("image/jpeg");
        frame->setType(TagLib::ID3v2::AttachedPictureFrame::FrontCover);
        frame->setPicture(bytes(jpeg));
        id3->addFrame(frame);
    }
    return file.save(TagLib::MPEG::File::ID3v2, TagLib::File::StripNone, TagLib::ID3v2::v4);
}

bool writeM4a(const QByteArray& path, const std::optional<MusicTags>& tags, const QByteArray& jpeg)
{
    TagLib::MP4::File file(path.constData(), false);
    if (!file.isValid() || !file.tag())
        return false;
    if (tags) {
        MusicTags plain = *tags;
        plain.trackLoudness.reset();
        plain.albumLoudness.reset();
        file.setProperties(merged(file.properties(), plain, false));
        // The names players look for, in the case they write them.
        const auto item = [&file](const char* name, const QString& value) {
            file.tag()->setItem(TagLib::String("----:com.apple.iTunes:") + name,
                                TagLib::MP4::Item(TagLib::StringList(text(value))));
        };
        for (const auto& [loudness, prefix] : {std::pair{tags->trackLoudness, "replaygain_track_"},
                                               std::pair{tags->albumLoudness, "replaygain_album_"}}) {
            if (!loudness)
                continue;
            item((std::string(prefix) + "gain").c_str(), Loudness::gainText(loudness->gain()));
            item((std::string(prefix) + "peak").c_str(), Loudness::peakText(loudness->peak()));
        }
    }
    if (!jpeg.isEmpty()) {
        TagLib::MP4::CoverArtList covers;
        covers.append(TagLib::MP4::CoverArt(TagLib::MP4::CoverArt::JPEG, bytes(jpeg)));
        file.tag()->setItem("covr", TagLib::MP4::Item(covers));
    }
    return file.save();
}

bool writeFlac(const QByteArray& path, const std::optional<MusicTags>& tags, const QByteArray& jpeg)
{
    TagLib::FLAC::File file(path.constData(), false);
    if (!file.isValid())
        return false;
    if (tags)
        file.xiphComment(true)->setProperties(
            merged(file.xiphComment(true)->properties(), *tags, true));
    if (!jpeg.isEmpty()) {
        file.removePictures();
        file.addPicture(flacPicture(jpeg));
    }
    return file.save();
}

bool writeOpus(const QByteArray& path, const std::optional<MusicTags>& tags, const QByteArray& jpeg)
{
    TagLib::Ogg::Opus::File file(path.constData(), false);
    if (!file.isValid() || !file.tag())
        return false;
    TagLib::Ogg::XiphComment* comment = file.tag();
    if (tags)
        comment->setProperties(merged(comment->properties(), *tags, true, true));
    if (!jpeg.isEmpty()) {
        comment->removeAllPictures();
        comment->addPicture(flacPicture(jpeg));
    }
    return file.save();
}

} // namespace

namespace TagWriter {

bool write(const QString& path, AudioFormat format, const std::optional<MusicTags>& tags,
           const QByteArray& jpeg)
{
    if (!tags && jpeg.isEmpty())
        return true;
    const QByteArray name = QFile::encodeName(path);
    if (format == AudioFormat::mp3)
        return writeMp3(name, tags, jpeg);
    if (format == AudioFormat::m4a)
        return writeM4a(name, tags, jpeg);
    if (format == AudioFormat::flac)
        return writeFlac(name, tags, jpeg);
    if (format == AudioFormat::opus)
        return writeOpus(name, tags, jpeg);
    return true;
}

} // namespace TagWriter
