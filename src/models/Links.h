// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

// What the app makes of the links it is given, in one place: pasted, typed, dropped, handed
// over from outside, read from the library.
namespace Links {

// Trims whitespace and the line ends the platform knows (U+0085, U+2028, U+2029 too).
QString trimmed(const QString& text);
// A link to hand to yt-dlp: not empty, and not starting with "-", which would be read as an
// option.
bool isUsable(const QString& link);
// An http or https address with a host, as a link from outside or an old record must be.
bool isWebAddress(const QString& link);
// The web links among a program's arguments; "veldtone:LINK" (percent-encoded or after "//")
// carries one.
QStringList fromArguments(const QStringList& arguments);

// The batch's paste rule: the trimmed lines of text that name the video service, in order.
QStringList accepted(const QString& text);
// The one link a drop on the converter means: the first the batch would take, else the first
// line; empty for none.
QString firstOf(const QString& text);
// The batch editor's text after pasting clipboardText into it.
QString pasted(const QString& editorText, const QString& clipboardText);

// What identifies a link's video: the id in its watch?v=, youtu.be/ or /shorts/ form, else
// the link itself.
QString videoId(const QString& link);
// A link to a list and not one video: a /playlist page naming its list, or a channel's page
// (/@name, /channel/…, /c/…, /user/…) or one of its /videos, /streams or /shorts tabs.
bool isList(const QString& link);

// Whether the link is on YouTube (its main domain, a subdomain, or its short links).
bool isYouTube(const QString& link);
// The link a list link is listed by: a channel through its uploads tab ("/videos"; its home
// page mixes several tabs), anything else as it stands; empty for no list link.
QString listing(const QString& link);
// The playlist a video link also names (watch?v=…&list=…) as a link of its own; empty when it
// names none.
QString playlistOf(const QString& link);

} // namespace Links
