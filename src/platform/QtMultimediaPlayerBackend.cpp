// SPDX-License-Identifier: GPL-3.0-or-later
#include "QtMultimediaPlayerBackend.h"

#include <QAudioOutput>
#include <QFile>
#include <QFileInfo>
#include <QMediaPlayer>
#include <QUrl>
#include <algorithm>
#include <cmath>
#include <utility>

QtMultimediaPlayerBackend::QtMultimediaPlayerBackend(QObject* parent)
    : PlayerBackend(parent)
    , m_player(new QMediaPlayer(this))
    , m_output(new QAudioOutput(this))
{
    m_player->setAudioOutput(m_output);

    // Qt Multimedia may signal from inside our own calls (setSource, stop); the service must
    // only hear about the file it asked for, and only from the event loop.
    connect(m_player, &QMediaPlayer::durationChanged, this, [this](qint64 ms) {
        if (ms > 0)
            post([this, ms] { emit durationKnown(static_cast<double>(ms) / 1000.0); });
    });
    connect(m_player, &QMediaPlayer::errorOccurred, this,
            [this](QMediaPlayer::Error error, const QString& text) {
                if (error == QMediaPlayer::NoError)
                    return;
                post([this, text] { emit errorOccurred(text); });
            });
    connect(m_player, &QMediaPlayer::positionChanged, this, [this](qint64 ms) {
        if (m_loaded && m_pendingSeekMs && ms + 100 >= *m_pendingSeekMs)
            m_pendingSeekMs.reset();
    });
    connect(m_player, &QMediaPlayer::mediaStatusChanged, this,
            [this](QMediaPlayer::MediaStatus status) {
                switch (status) {
                // Earlier, while the pipeline is still starting, Qt drops a new position.
                case QMediaPlayer::BufferedMedia:
                    if (!m_loaded && !m_player->source().isEmpty()) {
                        m_loaded = true;
                        // Keep reporting the target until the pipeline has caught up with it:
                        // its first positions after the seek can still be the old ones. Qt
                        // echoes the target from inside setPosition; that is no reading.
                        if (const std::optional<qint64> target = m_pendingSeekMs) {
                            m_player->setPosition(*target);
                            m_pendingSeekMs = target;
                        }
                    }
                    break;
                case QMediaPlayer::EndOfMedia:
                    m_atEnd = true;
                    m_pendingSeekMs.reset();
                    post([this] { emit ended(); });
                    break;
                default:
                    break;
                }
            });
}

QtMultimediaPlayerBackend::~QtMultimediaPlayerBackend()
{
    disconnect(m_player, nullptr, this, nullptr);
}

void QtMultimediaPlayerBackend::post(std::function<void()> notify)
{
    QMetaObject::invokeMethod(
        this,
        [this, loadId = m_loadId, notify = std::move(notify)] {
            if (loadId == m_loadId)
                notify();
        },
        Qt::QueuedConnection);
}

QString QtMultimediaPlayerBackend::open(const QString& path)
{
    // GStreamer would only say "Could not open resource" later; say why now where we can.
    if (QFileInfo(path).isDir())
        return QStringLiteral("%1 is a folder, not an audio file.").arg(path);
    QFile probe(path);
    if (!probe.open(QIODevice::ReadOnly))
        return probe.errorString();
    probe.close();

    ++m_loadId;
    m_loaded = false;
    m_atEnd = false;
    m_pendingSeekMs.reset();
    m_player->setSource(QUrl::fromLocalFile(path));
    return {};
}

void QtMultimediaPlayerBackend::play()
{
    m_atEnd = false;
    m_player->play();
}

void QtMultimediaPlayerBackend::pause()
{
    m_player->pause();
}

void QtMultimediaPlayerBackend::stop()
{
    ++m_loadId;
    m_loaded = false;
    m_atEnd = false;
    m_pendingSeekMs.reset();
    m_player->stop();
    m_player->setSource(QUrl());
}

void QtMultimediaPlayerBackend::seek(double seconds)
{
    if (!std::isfinite(seconds))
        return;
    // Whole days are far beyond any file; the bound keeps the conversion defined.
    const double ms = std::clamp(seconds * 1000.0, 0.0, 1e12);
    m_atEnd = false;
    if (m_loaded) {
        m_pendingSeekMs.reset();
        m_player->setPosition(static_cast<qint64>(ms));
    } else
        m_pendingSeekMs = static_cast<qint64>(ms);
}

void QtMultimediaPlayerBackend::setVolume(float volume)
{
    m_output->setVolume(std::isfinite(volume) ? std::clamp(volume, 0.0f, 1.0f) : 1.0f);
}

double QtMultimediaPlayerBackend::position() const
{
    const double seconds =
        static_cast<double>(m_pendingSeekMs.value_or(m_player->position())) / 1000.0;
    // The pipeline's last reported position can trail the end by a buffer or two.
    return m_atEnd ? std::max(seconds, duration()) : seconds;
}

double QtMultimediaPlayerBackend::duration() const
{
    return static_cast<double>(m_player->duration()) / 1000.0;
}

bool QtMultimediaPlayerBackend::isPlaying() const
{
    return m_player->playbackState() == QMediaPlayer::PlayingState;
}
