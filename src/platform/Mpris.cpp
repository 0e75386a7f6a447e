// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Mpris.h"

#include "services/ArtworkCache.h"
#include "services/AudioPlayerService.h"
#include "services/HistoryStore.h"
#include "services/PlaybackQueue.h"

#include <QCoreApplication>
#include <QDBusAbstractAdaptor>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QFileInfo>
#include <QUrl>
#include <QUuid>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

const QString kObjectPath = u"/org/mpris/MediaPlayer2"_s;
const QString kPlayerInterface = u"org.mpris.MediaPlayer2.Player"_s;
constexpr double kMicroseconds = 1e6;

} // namespace

// org.mpris.MediaPlayer2: who the player is and what the desktop may ask of it.
class MprisRootAdaptor : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.mpris.MediaPlayer2")
    Q_PROPERTY(bool CanQuit READ canQuit)
    Q_PROPERTY(bool CanRaise READ canRaise)
    Q_PROPERTY(bool HasTrackList READ hasTrackList)
    Q_PROPERTY(QString Identity READ identity)
    Q_PROPERTY(QString DesktopEntry READ desktopEntry)
    Q_PROPERTY(QStringList SupportedUriSchemes READ supportedUriSchemes)
    Q_PROPERTY(QStringList SupportedMimeTypes READ supportedMimeTypes)

public:
    explicit MprisRootAdaptor(Mpris* mpris)
        : QDBusAbstractAdaptor(mpris)
        , m_mpris(mpris)
    {}
    bool canQuit() const { return true; }
    bool canRaise() const { return true; }
    bool hasTrackList() const { return false; }
    QString identity() const { return u"Veldtone"_s; }
    QString desktopEntry() const { return u"io.github.veldtone.Veldtone"_s; }
    QStringList supportedUriSchemes() const { return {u"file"_s}; }
    QStringList supportedMimeTypes() const
    {
        return {u"audio/mpeg"_s,  u"audio/mp4"_s, u"audio/flac"_s,
                u"audio/x-wav"_s, u"audio/ogg"_s, u"audio/opus"_s};
    }

public slots:
    void Raise() { emit m_mpris->raiseRequested(); }
    void Quit() { emit m_mpris->quitRequested(); }

private:
    Mpris* m_mpris;
};

// org.mpris.MediaPlayer2.Player: the transport, the track and where it is.
class MprisPlayerAdaptor : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.mpris.MediaPlayer2.Player")
    Q_PROPERTY(QString PlaybackStatus READ playbackStatus)
    Q_PROPERTY(QString LoopStatus READ loopStatus WRITE setLoopStatus)
    Q_PROPERTY(double Rate READ rate WRITE setRate)
    Q_PROPERTY(double MinimumRate READ rate)
    Q_PROPERTY(double MaximumRate READ rate)
    Q_PROPERTY(bool Shuffle READ shuffle WRITE setShuffle)
    Q_PROPERTY(QVariantMap Metadata READ metadata)
    Q_PROPERTY(double Volume READ volume WRITE setVolume)
    Q_PROPERTY(qlonglong Position READ position)
    Q_PROPERTY(bool CanGoNext READ canGoNext)
    Q_PROPERTY(bool CanGoPrevious READ canGoPrevious)
    Q_PROPERTY(bool CanPlay READ canPlay)
    Q_PROPERTY(bool CanPause READ hasTrack)
    Q_PROPERTY(bool CanSeek READ hasTrack)
    Q_PROPERTY(bool CanControl READ canControl)

public:
    explicit MprisPlayerAdaptor(Mpris* mpris)
        : QDBusAbstractAdaptor(mpris)
        , m_mpris(mpris)
    {
        connect(mpris, &Mpris::seeked, this, &MprisPlayerAdaptor::Seeked);
    }
    QString playbackStatus() const { return m_mpris->playbackStatus(); }
    QString loopStatus() const { return u"None"_s; }
    void setLoopStatus(const QString&) {}
    double rate() const { return 1.0; }
    void setRate(double) {}
    bool shuffle() const { return false; }
    void setShuffle(bool) {}
    QVariantMap metadata() const { return m_mpris->metadata(); }
    double volume() const { return m_mpris->volume(); }
    void setVolume(double volume) { m_mpris->setVolume(volume); }
    qlonglong position() const { return m_mpris->position(); }
    bool canGoNext() const { return m_mpris->canGoNext(); }
    bool canGoPrevious() const { return m_mpris->canGoPrevious(); }
    bool canPlay() const { return m_mpris->canPlay(); }
    bool hasTrack() const { return m_mpris->hasTrack(); }
    bool canControl() const { return true; }

public slots:
    void Next() { m_mpris->next(); }
    void Previous() { m_mpris->previous(); }
    void Pause() { m_mpris->pause(); }
    void PlayPause() { m_mpris->playPause(); }
    void Stop() { m_mpris->stop(); }
    void Play() { m_mpris->play(); }
    void Seek(qlonglong offset) { m_mpris->seek(offset); }
    void SetPosition(const QDBusObjectPath& track, qlonglong position)
    {
        m_mpris->setPosition(track, position);
    }
    void OpenUri(const QString& uri) { m_mpris->openUri(uri); }

signals:
    void Seeked(qlonglong position);

private:
    Mpris* m_mpris;
};

Mpris::Mpris(AudioPlayerService& player, PlaybackQueue& queue, HistoryStore& history,
             const QString& artFolder, const QString& name, QObject* parent)
    : QObject(parent)
    , m_player(player)
    , m_queue(queue)
    , m_history(history)
    , m_artFolder(artFolder)
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    new MprisRootAdaptor(this);
    new MprisPlayerAdaptor(this);
    if (!bus.registerObject(kObjectPath, this, QDBusConnection::ExportAdaptors))
        return;
    // A second process on the bus (a test beside a running app) takes a name of its own.
    m_busName = name;
    if (!bus.registerService(m_busName)) {
        m_busName = name + u".instance"_s + QString::number(QCoreApplication::applicationPid());
        if (!bus.registerService(m_busName)) {
            bus.unregisterObject(kObjectPath);
            m_busName.clear();
            return;
        }
    }
    for (auto signal :
         {&AudioPlayerService::currentTrackChanged, &AudioPlayerService::isPlayingChanged,
          &AudioPlayerService::volumeChanged, &AudioPlayerService::durationChanged})
        connect(&m_player, signal, this, &Mpris::announce);
    connect(&m_queue, &PlaybackQueue::positionChanged, this, &Mpris::announce);
    connect(&m_history, &HistoryStore::tracksChanged, this, &Mpris::announce);
    connect(&m_player, &AudioPlayerService::seeked, this, [this] { emit seeked(position()); });
    announce();
}

Mpris::~Mpris()
{
    if (m_busName.isEmpty())
        return;
    QDBusConnection bus = QDBusConnection::sessionBus();
    bus.unregisterService(m_busName);
    bus.unregisterObject(kObjectPath);
}

QString Mpris::trackPath(const QString& recordId)
{
    QString id = recordId;
    id.remove(u'{').remove(u'}').replace(u'-', u'_');
    return u"/io/github/veldtone/track/"_s + id;
}

QString Mpris::playbackStatus() const
{
    if (!m_player.currentTrack())
        return u"Stopped"_s;
    return m_player.isPlaying() ? u"Playing"_s : u"Paused"_s;
}

QVariantMap Mpris::metadata() const
{
    const std::optional<HistoryTrack> track = m_player.currentTrack();
    if (!track)
        return {{u"mpris:trackid"_s, QVariant::fromValue(QDBusObjectPath(
                                         u"/org/mpris/MediaPlayer2/TrackList/NoTrack"_s))}};
    QVariantMap map{
        {u"mpris:trackid"_s,
         QVariant::fromValue(QDBusObjectPath(trackPath(track->id.toString(QUuid::WithoutBraces))))},
        {u"xesam:title"_s, track->title},
        {u"xesam:artist"_s, QStringList{track->channel}},
        {u"mpris:length"_s, qint64(std::llround(m_player.duration() * kMicroseconds))},
    };
    if (!track->album.isEmpty())
        map.insert(u"xesam:album"_s, track->album);
    const QString art = track->thumbnailUrl.isEmpty()
                            ? QString()
                            : ArtworkCache::fileFor(m_artFolder, track->thumbnailUrl);
    if (!art.isEmpty() && QFileInfo::exists(art))
        map.insert(u"mpris:artUrl"_s, QUrl::fromLocalFile(art).toString());
    return map;
}

double Mpris::volume() const
{
    return m_player.volume();
}

void Mpris::setVolume(double volume)
{
    m_player.setVolume(float(std::clamp(volume, 0.0, 1.0)));
}

qint64 Mpris::position() const
{
    return qint64(std::llround(std::max(m_player.currentTime(), 0.0) * kMicroseconds));
}

bool Mpris::canGoNext() const
{
    return m_queue.canGoNext();
}

bool Mpris::canGoPrevious() const
{
    return m_queue.canGoPrevious();
}

bool Mpris::canPlay() const
{
    return hasTrack() || !m_history.tracks().isEmpty();
}

bool Mpris::hasTrack() const
{
    return m_player.currentTrack().has_value();
}

void Mpris::next()
{
    m_queue.next();
}

void Mpris::previous()
{
    m_queue.previous();
}

void Mpris::pause()
{
    if (m_player.isPlaying())
        m_player.togglePlayPause();
}

void Mpris::playPause()
{
    if (hasTrack())
        m_player.togglePlayPause();
    else
        play();
}

void Mpris::stop()
{
    m_player.stop();
}

void Mpris::play()
{
    if (hasTrack()) {
        if (!m_player.isPlaying())
            m_player.togglePlayPause();
    } else if (!m_history.tracks().isEmpty()) {
        m_queue.play(m_history.tracks().first());
    }
}

void Mpris::seek(qint64 offset)
{
    if (!hasTrack())
        return;
    const double to = m_player.currentTime() + double(offset) / kMicroseconds;
    // Past the end is the next track, as the interface asks.
    if (to >= m_player.duration() && m_player.duration() > 0) {
        m_queue.next();
        return;
    }
    m_player.seek(std::max(to, 0.0));
}

void Mpris::setPosition(const QDBusObjectPath& track, qint64 position)
{
    const std::optional<HistoryTrack> current = m_player.currentTrack();
    // A stale track id, or a place outside the track, is ignored as the interface asks.
    if (!current || track.path() != trackPath(current->id.toString(QUuid::WithoutBraces)) ||
        position < 0 || double(position) / kMicroseconds > m_player.duration())
        return;
    m_player.seek(double(position) / kMicroseconds);
}

void Mpris::openUri(const QString& uri)
{
    const QUrl url(uri);
    if (!url.isLocalFile() || !QFileInfo(url.toLocalFile()).isFile())
        return;
    // A file of the library plays as its record; any other as a track of its own.
    const QString path = url.toLocalFile();
    for (const HistoryTrack& track : m_history.tracks()) {
        if (track.filePath == path) {
            m_queue.play(track);
            return;
        }
    }
    HistoryTrack outside;
    outside.id = QUuid::createUuid();
    outside.title = QFileInfo(path).completeBaseName();
    outside.filePath = path;
    m_player.play(outside);
}

void Mpris::announce()
{
    const QVariantMap now{
        {u"PlaybackStatus"_s, playbackStatus()},
        {u"Metadata"_s, metadata()},
        {u"Volume"_s, volume()},
        {u"CanGoNext"_s, canGoNext()},
        {u"CanGoPrevious"_s, canGoPrevious()},
        {u"CanPlay"_s, canPlay()},
        {u"CanPause"_s, hasTrack()},
        {u"CanSeek"_s, hasTrack()},
    };
    QVariantMap changed;
    for (auto it = now.cbegin(); it != now.cend(); ++it) {
        if (m_announced.value(it.key()) != it.value())
            changed.insert(it.key(), it.value());
    }
    m_announced = now;
    if (changed.isEmpty())
        return;
    QDBusMessage message = QDBusMessage::createSignal(
        kObjectPath, u"org.freedesktop.DBus.Properties"_s, u"PropertiesChanged"_s);
    message << kPlayerInterface << changed << QStringList();
    QDBusConnection::sessionBus().send(message);
}

#include "Mpris.moc"
