// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCoreApplication>
#include <QString>

// What would help when yt-dlp fails, read from its error text: a tool too old for the site
// (or without a JavaScript runtime), or a site asking the user to sign in.
class ToolAdvice
{
    Q_DECLARE_TR_FUNCTIONS(ToolAdvice)

public:
    enum class Kind
    {
        none,
        updateTools,
        useCookies
    };

    // Matched without regard to case.
    static Kind forError(const QString& errorText);
    // One line for the failure card and the batch row's tooltip; empty for none.
    static QString text(Kind kind);
};
