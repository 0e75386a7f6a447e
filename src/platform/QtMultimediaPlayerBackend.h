// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/PlayerBackend.h"

#include <functional>
#include <optional>

class QAudioOutput;
class QMediaPlayer;

// Plays files through Qt Multimedia (GStreamer on Linux) on the default audio output.
class QtMultimediaPlayerBackend : public PlayerBackend
{
    Q_OBJECT

public:
    explicit QtMultimediaPlayerBackend(QObject* parent = nullptr);
    ~QtMultimediaPlayerBackend() override;

    QString open(const QString& path) override;
    void play() override;
    void pause() override;
    void stop() override;
    void seek(double seconds) override;
    void setVolume(float volume) override;

    double position() const override;
    double duration() const override;
    bool isPlaying() const override;

private:
    // Delivers a notification from the event loop, dropped if another file was opened since.
    void post(std::function<void()> notify);

    QMediaPlayer* m_player = nullptr;
    QAudioOutput* m_output = nullptr;
    quint64 m_loadId = 0;
    bool m_loaded = false;
    bool m_atEnd = false;
    // A seek made before the file finished loading, which Qt Multimedia would drop.
    std::optional<qint64> m_pendingSeekMs;
};
