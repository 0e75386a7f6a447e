// SPDX-License-Identifier: GPL-3.0-or-later
#include "models/Links.h"

#include <QTest>

using namespace Qt::StringLiterals;

// Every link rule, one table: what each makes of a text. Lists are compared joined by "|",
// yes/no answers as "yes" and "no".
class TestLinks : public QObject
{
    Q_OBJECT

private slots:
    void rules_data()
    {
        QTest::addColumn<QString>("rule");
        QTest::addColumn<QString>("input");
        QTest::addColumn<QString>("expected");
        const QString yt = u"https://www.youtube.com"_s;
        const auto row = [](const char* name, const QString& rule, const QString& input,
                            const QString& expected) {
            QTest::newRow(name) << rule << input << expected;
        };

        row("trim: spaces and line ends", u"trimmed"_s, u" \u2028\thttps://youtu.be/a \r\n\u0085"_s,
            u"https://youtu.be/a"_s);
        row("usable: empty", u"usable"_s, QString(), u"no"_s);
        row("usable: an option", u"usable"_s, u"--exec=rm"_s, u"no"_s);
        row("web: https", u"web"_s, yt + u"/watch?v=a"_s, u"yes"_s);

        const QString link = yt + u"/watch?v=abc&list=x"_s;
        row("arguments: web link", u"arguments"_s, link, link);
        row("arguments: own scheme, encoded", u"arguments"_s,
            u"veldtone:https%3A%2F%2Fyoutu.be%2Fabc"_s, u"https://youtu.be/abc"_s);
        row("arguments: options, files, other schemes", u"arguments"_s,
            u"--reverse|/tmp/a.mp3|ftp://host/a|https://|veldtone:|http://youtu.be/b"_s,
            u"http://youtu.be/b"_s);

        row("paste: capitals are not the service", u"accepted"_s,
            u"https://YOUTUBE.COM/watch?v=a\nhttps://YouTu.be/b"_s, QString());
        row("paste: any line naming the service", u"accepted"_s,
            u"see youtube.com for more\nnotes about youtu.be"_s,
            u"see youtube.com for more|notes about youtu.be"_s);
        row("paste: every line end", u"accepted"_s,
            u"https://youtu.be/a\r\nhttps://youtu.be/b\u2028https://youtu.be/c\r\n"_s,
            u"https://youtu.be/a|https://youtu.be/b|https://youtu.be/c"_s);
        row("drop: the service's link first", u"first"_s, u"other\n https://youtu.be/a \n"_s,
            u"https://youtu.be/a"_s);

        row("id: watch", u"videoId"_s, yt + u"/watch?v=abc&t=3"_s, u"abc"_s);
        row("id: short link", u"videoId"_s, u"https://youtu.be/abc?si=x"_s, u"abc"_s);
        row("id: shorts", u"videoId"_s, u"https://m.youtube.com/shorts/abc"_s, u"abc"_s);

        row("list: playlist", u"listing"_s, yt + u"/playlist?list=PLx"_s,
            yt + u"/playlist?list=PLx"_s);
        row("list: a video in a playlist", u"listing"_s, link, QString());
        row("list: handle", u"listing"_s, yt + u"/@band"_s, yt + u"/@band/videos"_s);
        row("list: handle's featured tab", u"listing"_s, yt + u"/@band/featured?x=1"_s,
            yt + u"/@band/videos"_s);
        row("list: channel id", u"listing"_s, yt + u"/channel/UC1"_s,
            yt + u"/channel/UC1/videos"_s);
        row("list: custom name's shorts", u"listing"_s, yt + u"/c/band/shorts"_s,
            yt + u"/c/band/shorts"_s);
        row("list: bare @", u"listing"_s, yt + u"/@"_s, QString());
        row("list: a short", u"listing"_s, yt + u"/shorts/abc"_s, QString());

        row("playlist of a video", u"playlistOf"_s, link, yt + u"/playlist?list=x"_s);
        row("playlist of a playlist", u"playlistOf"_s, yt + u"/playlist?list=x"_s, QString());
    }
    void rules()
    {
        QFETCH(QString, rule);
        QFETCH(QString, input);
        QFETCH(QString, expected);
        const auto yes = [](bool value) { return value ? u"yes"_s : u"no"_s; };
        QString actual;
        if (rule == u"trimmed")
            actual = Links::trimmed(input);
        else if (rule == u"usable")
            actual = yes(Links::isUsable(input));
        else if (rule == u"web")
            actual = yes(Links::isWebAddress(input));
        else if (rule == u"arguments")
            actual = Links::fromArguments(input.split(u'|')).join(u'|');
        else if (rule == u"accepted")
            actual = Links::accepted(input).join(u'|');
        else if (rule == u"first")
            actual = Links::firstOf(input);
        else if (rule == u"videoId")
            actual = Links::videoId(input);
        else if (rule == u"playlistOf")
            actual = Links::playlistOf(input);
        else if (rule == u"listing")
            actual = Links::listing(input);
        QCOMPARE(actual, expected);
        if (rule == u"listing")
            QCOMPARE(Links::isList(input), !expected.isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestLinks)
#include "tst_links.moc"
