// SPDX-License-Identifier: GPL-3.0-or-later
#include "services/FollowService.h"

#include "models/Links.h"
#include "services/BatchRunner.h"
#include "services/DownloadEngine.h"
#include "services/PlaylistListing.h"
#include "services/SettingsKeys.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRandomGenerator>
#include <QSaveFile>
#include <QSettings>
#include <QTimer>
#include <QtConcurrent/QtConcurrentRun>

using namespace Qt::StringLiterals;

namespace {

// A channel's uploads tab lists its newest first; these are enough between two checks.
constexpr int kChannelEntries = 50;
constexpr qint64 kHourMs = 60 * 60 * 1000;

// What tells entries apart: the video's id, or its place in the playlist.
QString seenKey(const PlaylistEntry& entry)
{
    return entry.metadata.id.isEmpty() ? entry.link + u'#' + QString::number(entry.playlistItem)
                                       : entry.metadata.id;
}

bool isChannel(const QString& link)
{
    return Links::isList(link) && QUrl(link).path() != u"/playlist";
}

QJsonObject toJson(const Subscription& subscription)
{
    QJsonArray seen;
    for (const QString& key : subscription.seen)
        seen.append(key);
    QJsonObject object{{u"id"_s, subscription.id.toString(QUuid::WithoutBraces)},
                       {u"link"_s, subscription.link},
                       {u"name"_s, subscription.name},
                       {u"asAlbum"_s, subscription.asAlbum},
                       {u"tracksFound"_s, subscription.tracksFound},
                       {u"error"_s, subscription.error},
                       {u"seen"_s, seen}};
    if (subscription.choices.format)
        object.insert(u"format"_s, subscription.choices.format->rawValue());
    if (subscription.choices.quality)
        object.insert(u"quality"_s, subscription.choices.quality->rawValue());
    if (subscription.choices.folder)
        object.insert(u"folder"_s, *subscription.choices.folder);
    if (subscription.lastCheck.isValid())
        object.insert(u"lastCheck"_s, subscription.lastCheck.toString(Qt::ISODate));
    return object;
}

std::optional<Subscription> fromJson(const QJsonObject& object)
{
    Subscription subscription;
    subscription.id = QUuid::fromString(object.value(u"id"_s).toString());
    subscription.link = object.value(u"link"_s).toString();
    if (subscription.id.isNull() || subscription.link.isEmpty())
        return std::nullopt;
    subscription.name = object.value(u"name"_s).toString(subscription.link);
    subscription.asAlbum = object.value(u"asAlbum"_s).toBool();
    subscription.tracksFound = std::max(0, object.value(u"tracksFound"_s).toInt());
    subscription.error = object.value(u"error"_s).toString();
    subscription.choices.format = AudioFormat::fromRawValue(object.value(u"format"_s).toString());
    subscription.choices.quality =
        AudioQuality::fromRawValue(object.value(u"quality"_s).toString());
    if (object.value(u"folder"_s).isString())
        subscription.choices.folder = object.value(u"folder"_s).toString();
    subscription.lastCheck =
        QDateTime::fromString(object.value(u"lastCheck"_s).toString(), Qt::ISODate);
    for (const QJsonValue& key : object.value(u"seen"_s).toArray())
        subscription.seen.insert(key.toString());
    return subscription;
}

} // namespace

FollowService::FollowService(DownloadEngine& engine, BatchRunner& batch, FollowOptions options,
                             std::unique_ptr<QSettings> settings, QObject* parent)
    : QObject(parent)
    , m_engine(engine)
    , m_batch(batch)
    , m_options(std::move(options))
    , m_settings(SettingsKeys::open(std::move(settings)))
    , m_interval(new QTimer(this))
    , m_pace(new QTimer(this))
{
    m_savePool.setMaxThreadCount(1);
    connect(m_interval, &QTimer::timeout, this, &FollowService::checkAll);
    m_pace->setSingleShot(true);
    connect(m_pace, &QTimer::timeout, this, &FollowService::listNext);
    m_clock.start();
}

FollowService::~FollowService()
{
    // A listing still running goes with its parent, ending its tool.
    m_savePool.waitForDone();
}

int FollowService::intervalHours() const
{
    const int hours =
        m_settings->value(SettingsKeys::followInterval, SettingsKeys::followIntervalDefault)
            .toInt();
    return hours == 0 || hours == 1 || hours == 6 || hours == 24
               ? hours
               : SettingsKeys::followIntervalDefault;
}

void FollowService::setIntervalHours(int hours)
{
    if (hours == intervalHours())
        return;
    m_settings->setValue(SettingsKeys::followInterval, hours);
    if (m_started && intervalHours() > 0)
        m_interval->start(int(std::min<qint64>(intervalHours() * kHourMs, INT_MAX)));
    else
        m_interval->stop();
    emit changed();
}

void FollowService::start()
{
    if (m_started)
        return;
    m_started = true;
    QFile file(m_options.file);
    if (!m_options.file.isEmpty() && file.open(QIODevice::ReadOnly)) {
        for (const QJsonValue& value : QJsonDocument::fromJson(file.readAll()).array()) {
            if (const std::optional<Subscription> subscription = fromJson(value.toObject()))
                m_subscriptions.append(*subscription);
        }
    }
    if (intervalHours() > 0)
        m_interval->start(int(std::min<qint64>(intervalHours() * kHourMs, INT_MAX)));
    emit changed();
    checkAll();
}

int FollowService::indexOf(const QUuid& id) const
{
    for (qsizetype i = 0; i < m_subscriptions.size(); ++i) {
        if (m_subscriptions.at(i).id == id)
            return int(i);
    }
    return -1;
}

bool FollowService::follow(const QString& link, int ripLatest, bool asAlbum)
{
    const QString trimmed = Links::trimmed(link);
    if (!Links::isUsable(trimmed))
        return false;
    for (const Subscription& subscription : std::as_const(m_subscriptions)) {
        if (subscription.link == trimmed)
            return false;
    }
    Subscription subscription;
    subscription.id = QUuid::createUuid();
    subscription.link = trimmed;
    subscription.name = trimmed;
    subscription.asAlbum = asAlbum;
    subscription.choices.format = m_engine.selectedFormat();
    subscription.choices.quality = m_engine.selectedQuality();
    subscription.choices.folder = DownloadEngine::folderPath(m_engine.targetFolder());
    m_subscriptions.append(subscription);
    m_toList.prepend({subscription.id, std::max(ripLatest, 0)});
    save();
    emit changed();
    listNext();
    return true;
}

void FollowService::unfollow(const QUuid& id)
{
    const int at = indexOf(id);
    if (at < 0)
        return;
    m_subscriptions.removeAt(at);
    m_toList.removeIf([&id](const auto& next) { return next.first == id; });
    if (m_checking == id) {
        delete std::exchange(m_listing, nullptr);
        m_checking.reset();
    }
    save();
    emit changed();
    listNext();
}

void FollowService::edit(const QUuid& id, const RipChoices& choices, bool asAlbum)
{
    const int at = indexOf(id);
    if (at < 0)
        return;
    m_subscriptions[at].choices = choices;
    m_subscriptions[at].asAlbum = asAlbum;
    save();
    emit changed();
}

void FollowService::checkNow(const QUuid& id)
{
    const bool waiting = std::any_of(m_toList.cbegin(), m_toList.cend(),
                                     [&id](const auto& next) { return next.first == id; });
    if (indexOf(id) < 0 || waiting || m_checking == id)
        return;
    m_toList.append({id, -1});
    listNext();
}

void FollowService::checkAll()
{
    for (const Subscription& subscription : std::as_const(m_subscriptions))
        checkNow(subscription.id);
}

void FollowService::listNext()
{
    if (m_listing || m_toList.isEmpty())
        return;
    // One listing at a time, apart, as a long batch's rips are.
    const qint64 wait = m_nextListing - m_clock.elapsed();
    if (wait > 0) {
        m_pace->start(int(wait));
        return;
    }
    const auto [next, ripLatest] = m_toList.takeFirst();
    const QUuid id = next;
    const int at = indexOf(id);
    if (at < 0) {
        listNext();
        return;
    }
    const QString link = m_subscriptions.at(at).link;
    const MadeRun<PlaylistListing> made =
        m_engine.newPlaylistListing(link, this, isChannel(link) ? kChannelEntries : 0);
    if (!made.run) {
        listed(id, {}, made.refusal, ripLatest);
        return;
    }
    m_listing = made.run;
    m_checking = id;
    auto entries = std::make_shared<QList<PlaylistEntry>>();
    connect(m_listing, &PlaylistListing::entriesArrived, this,
            [entries](const QList<PlaylistEntry>& more) { entries->append(more); });
    const int latest = ripLatest;
    connect(m_listing, &PlaylistListing::finished, this,
            [this, id, entries, latest](const QString& error) {
                std::exchange(m_listing, nullptr)->deleteLater();
                m_checking.reset();
                listed(id, *entries, error, latest);
            });
    emit changed();
    m_listing->start();
}

void FollowService::listed(const QUuid& id, const QList<PlaylistEntry>& entries,
                           const QString& error, int ripLatest)
{
    m_nextListing = m_clock.elapsed() + QRandomGenerator::global()->bounded(
                                            m_options.paceMinMs, m_options.paceMaxMs + 1);
    const int at = indexOf(id);
    if (at >= 0) {
        Subscription& subscription = m_subscriptions[at];
        subscription.lastCheck = QDateTime::currentDateTimeUtc();
        // A failure shows on its row and is tried again at the next check.
        subscription.error = entries.isEmpty() ? error : QString();
        if (!entries.isEmpty() && !entries.first().album.album.isEmpty())
            subscription.name = entries.first().album.album;
        QList<PlaylistEntry> fresh;
        for (const PlaylistEntry& entry : entries) {
            if (!subscription.seen.contains(seenKey(entry)))
                fresh.append(entry);
        }
        // Following: everything listed is seen but the newest asked for, which are the first
        // of a channel's uploads and the last of a playlist.
        if (ripLatest >= 0) {
            const qsizetype count = std::min<qsizetype>(ripLatest, fresh.size());
            fresh = isChannel(subscription.link) ? fresh.first(count) : fresh.last(count);
        }
        for (const PlaylistEntry& entry : entries)
            subscription.seen.insert(seenKey(entry));
        subscription.tracksFound += int(fresh.size());
        if (!fresh.isEmpty()) {
            m_batch.addEntries(fresh, subscription.asAlbum, subscription.link,
                               subscription.choices);
            m_batch.startBatchProcessing();
            emit newTracks(int(fresh.size()), subscription.name);
        }
        save();
    }
    emit changed();
    listNext();
}

void FollowService::save()
{
    if (m_options.file.isEmpty())
        return;
    QJsonArray all;
    for (const Subscription& subscription : std::as_const(m_subscriptions))
        all.append(toJson(subscription));
    (void)QtConcurrent::run(&m_savePool, [text = QJsonDocument(all).toJson(QJsonDocument::Compact),
                                          file = m_options.file] {
        QSaveFile out(file);
        if (out.open(QIODevice::WriteOnly) && out.write(text) == text.size())
            out.commit();
    });
}

void FollowService::flush()
{
    m_savePool.waitForDone();
}

QString FollowService::newTracksText(int count, const QString& name)
{
    return count == 1 ? tr("1 new track from %1").arg(name)
                      : tr("%1 new tracks from %2").arg(count).arg(name);
}
