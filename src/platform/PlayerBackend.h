// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>

// One audio file player, driven by AudioPlayerService. Times are in seconds.
//
// Signals are only ever delivered from the event loop, never from inside a call made on the
// backend, and only for the file opened last: the service may stop or reopen from a handler.
class PlayerBackend : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    // Loads a file, replacing whatever was loaded. Returns why it cannot be opened, or an empty
    // text; a problem found only while loading arrives later through errorOccurred().
    virtual QString open(const QString& path) = 0;
    virtual void play() = 0;
    virtual void pause() = 0;
    // Stops and unloads the file.
    virtual void stop() = 0;
    virtual void seek(double seconds) = 0;
    // 0 (silent) to 1 (full).
    virtual void setVolume(float volume) = 0;

    virtual double position() const = 0;
    // 0 until the length is known.
    virtual double duration() const = 0;
    virtual bool isPlaying() const = 0;

signals:
    void durationKnown(double seconds);
    void errorOccurred(const QString& description);
    // Playback reached the end of the file by itself.
    void ended();
};
