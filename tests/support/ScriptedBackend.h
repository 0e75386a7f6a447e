// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/PlayerBackend.h"

#include <QFileInfo>
#include <QStringList>

// A player whose every answer the test sets, and which records what it was told.
class ScriptedBackend : public PlayerBackend
{
public:
    QString open(const QString& path) override
    {
        calls << QStringLiteral("open ") + QFileInfo(path).fileName();
        if (!openError.isEmpty())
            return openError;
        loaded = path;
        playing = false;
        at = 0;
        length = QFileInfo(path).fileName() == u"a.mp3" ? 180.0 : 95.5;
        return {};
    }
    void play() override { record(QStringLiteral("play"), true); }
    void pause() override { record(QStringLiteral("pause"), false); }
    void stop() override
    {
        record(QStringLiteral("stop"), false);
        loaded.clear();
    }
    void seek(double seconds) override
    {
        record(QStringLiteral("seek %1").arg(seconds), playing);
        at = seconds;
    }
    void setVolume(float value) override
    {
        record(QStringLiteral("volume %1").arg(value), playing);
    }
    double position() const override { return at; }
    double duration() const override { return length; }
    bool isPlaying() const override { return playing; }

    void fail(const QString& text) { emit errorOccurred(text); }
    // Plays through to the end.
    void finish()
    {
        at = length;
        playing = false;
        emit ended();
    }
    void record(const QString& call, bool nowPlaying)
    {
        calls << call;
        playing = nowPlaying;
    }

    QStringList calls;
    QString loaded;
    QString openError;
    double at = 0;
    double length = 0;
    bool playing = false;
};
