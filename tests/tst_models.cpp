// SPDX-License-Identifier: GPL-3.0-or-later
#include "models/MusicTags.h"
#include "models/ToolAdvice.h"
#include "models/VideoMetadata.h"

#include <QTest>

using namespace Qt::StringLiterals;

class TestModels : public QObject
{
    Q_OBJECT

private slots:
    void formattedDuration_data()
    {
        QTest::addColumn<qint64>("seconds");
        QTest::addColumn<QString>("text");
        QTest::newRow("zero") << qint64(0) << u"0:00"_s;
        QTest::newRow("61") << qint64(61) << u"1:01"_s;
        QTest::newRow("3599") << qint64(3599) << u"59:59"_s;
        QTest::newRow("3600") << qint64(3600) << u"1:00:00"_s;
        QTest::newRow("36000") << qint64(36000) << u"10:00:00"_s;
    }
    void formattedDuration()
    {
        QFETCH(qint64, seconds);
        QFETCH(QString, text);
        QCOMPARE(VideoMetadata::formattedDuration(seconds), text);
    }

    void advice_data()
    {
        QTest::addColumn<QString>("error");
        QTest::addColumn<ToolAdvice::Kind>("kind");
        using Kind = ToolAdvice::Kind;
        QTest::newRow("format") << u"[youtube] x: Requested format is not available."_s
                                << Kind::updateTools;
        QTest::newRow("any case") << u"WARNING: NO SUPPORTED JAVASCRIPT RUNTIME could be found"_s
                                  << Kind::updateTools;
        QTest::newRow("nsig") << u"nsig extraction failed: Some formats may be missing"_s
                              << Kind::updateTools;
        QTest::newRow("curly apostrophe")
            << u"Sign in to confirm you\u2019re not a bot. Use --cookies"_s << Kind::useCookies;
        QTest::newRow("straight apostrophe") << u"you're not a bot"_s << Kind::useCookies;
        QTest::newRow("age") << u"This video is age-restricted"_s << Kind::useCookies;
        QTest::newRow("other") << u"HTTP Error 404: Not Found"_s << Kind::none;
    }
    void advice()
    {
        QFETCH(QString, error);
        QFETCH(ToolAdvice::Kind, kind);
        QCOMPARE(ToolAdvice::forError(error), kind);
        QCOMPARE(ToolAdvice::text(kind).isEmpty(), kind == ToolAdvice::Kind::none);
    }

    void musicTags_data()
    {
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("uploader");
        QTest::addColumn<QString>("siteArtist");
        QTest::addColumn<bool>("fromTitle");
        QTest::addColumn<QString>("song");
        QTest::addColumn<QString>("artist");
        QTest::newRow("hyphen, noise") << u"Band - Song (Official Video)"_s << u"Label"_s
                                       << QString() << true << u"Song"_s << u"Band"_s;
        QTest::newRow("en dash, two noises")
            << u"Band \u2013 Song (Lyrics) [Official Audio]"_s << u"x"_s << QString() << true
            << u"Song"_s << u"Band"_s;
        QTest::newRow("em dash, first one") << u"A \u2014 B - C (Official Music Video)"_s << u"x"_s
                                            << QString() << true << u"B - C"_s << u"A"_s;
        QTest::newRow("what is kept")
            << u"Band - Song (Live) [feat. Other]"_s << u"x"_s << QString() << true
            << u"Song (Live) [feat. Other]"_s << u"Band"_s;
        QTest::newRow("no spaces, no split") << u"AC-DC"_s << u"Some Artist - Topic"_s << QString()
                                             << true << u"AC-DC"_s << u"Some Artist"_s;
        QTest::newRow("empty side")
            << u" - Song"_s << u"LabelVEVO"_s << QString() << true << u" - Song"_s << u"Label"_s;
        QTest::newRow("rule off") << u"Band - Song (Audio)"_s << u"VEVO"_s << QString() << false
                                  << u"Band - Song (Audio)"_s << u"VEVO"_s;
        QTest::newRow("the site's artist wins")
            << u"Band - Song"_s << u"x"_s << u"Real"_s << true << u"Song"_s << u"Real"_s;
    }
    void musicTags()
    {
        QFETCH(QString, title);
        QFETCH(QString, uploader);
        QFETCH(QString, siteArtist);
        QFETCH(bool, fromTitle);
        VideoMetadata video;
        video.title = title;
        video.channel = uploader;
        video.music.artist = siteArtist;
        const MusicTags tags = MusicTags::of(video, fromTitle);
        QTEST(tags.title, "song");
        QTEST(tags.artist, "artist");
    }
};

QTEST_GUILESS_MAIN(TestModels)
#include "tst_models.moc"
