// SPDX-License-Identifier: GPL-3.0-or-later
#include "Links.h"

#include <QUrl>
#include <QUrlQuery>

namespace {

// The video service's main web domain and its short-link domain, matched case-sensitively.
const QString kMainDomain = QStringLiteral("youtube.com");
const QString kShortDomain = QStringLiteral("youtu.be");
const QString kScheme = QStringLiteral("veldtone:");

bool isNewline(QChar c)
{
    switch (c.unicode()) {
    case u'\n':
    case u'\r':
    case u'\v':
    case u'\f':
    case 0x85:
    case 0x2028:
    case 0x2029:
        return true;
    default:
        return false;
    }
}

QStringList lines(const QString& text)
{
    QStringList result;
    qsizetype start = 0;
    for (qsizetype i = 0; i <= text.size(); ++i) {
        if (i < text.size() && !isNewline(text.at(i)))
            continue;
        result.append(text.mid(start, i - start).trimmed());
        start = i + 1;
    }
    return result;
}

} // namespace

namespace Links {

QString trimmed(const QString& text)
{
    auto isSpace = [](QChar c) { return c.isSpace() || isNewline(c); };
    qsizetype begin = 0;
    qsizetype end = text.size();
    while (begin < end && isSpace(text.at(begin)))
        ++begin;
    while (end > begin && isSpace(text.at(end - 1)))
        --end;
    return text.mid(begin, end - begin);
}

bool isUsable(const QString& link)
{
    return !link.isEmpty() && !link.startsWith(u'-');
}

bool isWebAddress(const QString& link)
{
    const QUrl url(link, QUrl::StrictMode);
    return isUsable(link) && url.isValid() && !url.host().isEmpty() &&
           (url.scheme() == u"http" || url.scheme() == u"https");
}

QStringList fromArguments(const QStringList& arguments)
{
    QStringList links;
    for (QString argument : arguments) {
        argument = argument.trimmed();
        if (argument.startsWith(kScheme, Qt::CaseInsensitive)) {
            // A browser may send the carried link percent-encoded, or after "//".
            argument = argument.mid(kScheme.size());
            if (argument.startsWith(QStringLiteral("//")))
                argument = argument.mid(2);
            if (!argument.contains(u':'))
                argument = QUrl::fromPercentEncoding(argument.toUtf8());
        }
        if (isWebAddress(argument))
            links << argument;
    }
    return links;
}

QStringList accepted(const QString& text)
{
    QStringList links;
    for (const QString& line : lines(text)) {
        if (line.contains(kMainDomain) || line.contains(kShortDomain))
            links.append(line);
    }
    return links;
}

QString firstOf(const QString& text)
{
    const QStringList links = accepted(text);
    if (!links.isEmpty())
        return links.first();
    for (const QString& line : lines(text)) {
        if (!line.isEmpty())
            return line;
    }
    return {};
}

QString pasted(const QString& editorText, const QString& clipboardText)
{
    return editorText.isEmpty() ? clipboardText : editorText + u'\n' + clipboardText;
}

QString videoId(const QString& link)
{
    const QUrl url(link);
    const QString host = url.host().toLower();
    const QStringList segments = url.path().split(u'/', Qt::SkipEmptyParts);
    QString id;
    if (host == kShortDomain && !segments.isEmpty())
        id = segments.front();
    else if (host == kMainDomain || host.endsWith(u'.' + kMainDomain)) {
        if (segments.size() >= 2 && segments.front() == u"shorts")
            id = segments.at(1);
        else if (segments == QStringList{QStringLiteral("watch")})
            id = QUrlQuery(url).queryItemValue(QStringLiteral("v"));
    }
    return id.isEmpty() ? link : id;
}

bool isYouTube(const QString& link)
{
    const QString host = QUrl(link).host().toLower();
    return host == kShortDomain || host == kMainDomain || host.endsWith(u'.' + kMainDomain);
}

bool isList(const QString& link)
{
    return !listing(link).isEmpty();
}

QString listing(const QString& link)
{
    QUrl url(link);
    if (url.path() == u"/playlist")
        return QUrlQuery(url).queryItemValue(QStringLiteral("list")).isEmpty() ? QString() : link;
    const QStringList segments = url.path().split(u'/', Qt::SkipEmptyParts);
    // How many segments name the channel: "@name", or "channel|c|user" and its name.
    qsizetype named = 0;
    if (!segments.isEmpty() && segments.first().startsWith(u'@') && segments.first().size() > 1)
        named = 1;
    else if (segments.size() >= 2 && (segments.first() == u"channel" || segments.first() == u"c" ||
                                      segments.first() == u"user"))
        named = 2;
    if (named == 0)
        return {};
    static const QStringList listedAsTheyAre = {QStringLiteral("videos"), QStringLiteral("streams"),
                                                QStringLiteral("shorts")};
    if (segments.size() == named + 1 && listedAsTheyAre.contains(segments.last()))
        return link;
    url.setPath(u'/' + segments.first(named).join(u'/') + QStringLiteral("/videos"));
    url.setQuery(QString());
    url.setFragment(QString());
    return url.toString();
}

QString playlistOf(const QString& link)
{
    QUrl url(link);
    const QString list = QUrlQuery(url).queryItemValue(QStringLiteral("list"));
    if (list.isEmpty() || isList(link))
        return {};
    url.setPath(QStringLiteral("/playlist"));
    url.setQuery(QUrlQuery{{QStringLiteral("list"), list}});
    url.setFragment({});
    return url.toString();
}

} // namespace Links
