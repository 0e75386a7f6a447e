// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "models/PlaylistEntry.h"
#include "services/ToolInvocation.h"

#include <QByteArray>
#include <QFuture>
#include <QList>
#include <QObject>
#include <QString>
#include <QTimer>

// Lists a playlist's entries with one run of yt-dlp in its flat listing mode, as the tool
// prints them. Lines are read off the GUI thread and the entries handed on in a few chunks,
// so a listing of thousands never holds the window.
class PlaylistListing : public QObject
{
    Q_OBJECT

public:
    // silenceLimitMs: a tool that prints nothing for this long is taken for hung.
    PlaylistListing(const ToolInvocation& tool, const QString& link, int silenceLimitMs,
                    QObject* parent = nullptr);
    // Ends a tool still running.
    ~PlaylistListing() override;

    void start();
    QString link() const { return m_link; }
    // Entries handed on so far.
    int count() const { return m_count; }

signals:
    // The next entries, in playlist order.
    void entriesArrived(const QList<PlaylistEntry>& entries);
    // Once, after the last entries: error is empty, or says for the user why nothing was
    // listed (the tool's error, or an empty playlist).
    void finished(const QString& error);

private:
    void toolEnded(const ToolRun::Result& result);
    void parseReadyLines();
    void flush();
    void endIfDone();

    QString m_link;
    ToolRun* m_run;
    // Complete lines not yet parsed.
    QByteArray m_output;
    QList<PlaylistEntry> m_pending;
    QFuture<QList<PlaylistEntry>> m_parse;
    QTimer m_flushTimer;
    int m_linesRead = 0;
    int m_count = 0;
    bool m_parsing = false;
    bool m_toolEnded = false;
    bool m_ended = false;
    QString m_toolError;
};
