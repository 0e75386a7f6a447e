// SPDX-License-Identifier: GPL-3.0-or-later
#include "ToolAdvice.h"

#include <array>

namespace {
// What yt-dlp says when it is too old for the site, or lacks a JavaScript runtime.
constexpr std::array kOutdated = {
    u"Requested format is not available",
    u"n challenge solving failed",
    u"Signature solving failed",
    u"Signature extraction failed",
    u"nsig extraction failed",
    u"No supported JavaScript runtime",
    u"Unable to extract",
    u"older than 90 days",
};
// What a site says when it wants a signed-in browser. YouTube writes "you’re" with a curly
// apostrophe, so the phrases avoid it.
constexpr std::array kSignIn = {u"Sign in to confirm", u"not a bot", u"age-restricted"};

template <typename Phrases> bool mentions(const QString& text, const Phrases& phrases)
{
    for (const char16_t* phrase : phrases) {
        if (text.contains(QStringView(phrase), Qt::CaseInsensitive))
            return true;
    }
    return false;
}
} // namespace

ToolAdvice::Kind ToolAdvice::forError(const QString& errorText)
{
    // A bot check is the more specific answer: an update does not get past it.
    if (mentions(errorText, kSignIn))
        return Kind::useCookies;
    if (mentions(errorText, kOutdated))
        return Kind::updateTools;
    return Kind::none;
}

QString ToolAdvice::text(Kind kind)
{
    switch (kind) {
    case Kind::updateTools:
        return tr("yt-dlp may be too old for this site, or lack its JavaScript runtime.");
    case Kind::useCookies:
        return tr("The site wants a signed-in browser. Choose one under \"Use cookies from\" in "
                  "Settings.");
    case Kind::none:
        break;
    }
    return {};
}
