// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "models/HistoryTrack.h"
#include "models/VideoMetadata.h"

#include <QFuture>
#include <QList>
#include <QObject>
#include <QSet>
#include <QString>
#include <QThreadPool>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

class DesktopServices;

// The persistent library: every finished track, newest first, in one JSON file. The file is
// read and written on the store's own worker thread, so a large library never holds up the
// window; changes made before the file is read are applied on top of what it holds.
class HistoryStore : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QList<HistoryTrack> tracks READ tracks NOTIFY tracksChanged)
    Q_PROPERTY(bool isLoading READ isLoading NOTIFY isLoadingChanged)
    Q_PROPERTY(QString lastSaveError READ lastSaveError NOTIFY lastSaveErrorChanged)

public:
    // folderPath holds "history.json" and is created when missing. Nothing is read until load()
    // or the first change. desktop reveals and opens files; the store takes no ownership
    // (nullptr: the system's).
    explicit HistoryStore(const QString& folderPath, DesktopServices* desktop = nullptr,
                          QObject* parent = nullptr);
    // Waits for the last pending save, so that no change is lost at exit.
    ~HistoryStore() override;

    // The platform data folder + "/Veldtone".
    static QString defaultFolder();
    // Whether a store (in this or another process) holds the library in folderPath; pid tells
    // whose.
    static bool isInUse(const QString& folderPath, qint64* pid = nullptr);

    const QList<HistoryTrack>& tracks() const { return m_tracks; }
    QString filePath() const { return m_filePath; }
    QString folderPath() const { return m_folderPath; }
    // True from load() until the file's records are in tracks().
    bool isLoading() const { return m_state == State::loading; }
    // Why the last save failed, in plain words; empty once a save succeeds.
    QString lastSaveError() const { return m_lastSaveError; }

    // Starts reading the file on the worker; tracks() changes when its records are in.
    void load();
    // Puts track first, replacing any record with the same file path or id.
    void addTrack(const HistoryTrack& track);
    // Gives the record with this id the video's title, channel, duration and artwork, in place.
    void updateDetails(const QUuid& id, const VideoMetadata& metadata);
    // Gives the records of these files an album's gain (dB) and peak, in place.
    void setAlbumLoudness(const QStringList& filePaths, double gain, double peak);
    // Removes the records at these positions of tracks().
    void removeTrack(const QSet<int>& positions);
    // Removes every record with track's id.
    void removeTrack(const HistoryTrack& track);
    // Empties the library; audio files stay where they are.
    void clearAll();
    // Reveals the file in the file manager, or opens its folder when the file is gone.
    void showInFinder(const HistoryTrack& track);
    // Opens the file with its default application when it exists.
    void openFile(const HistoryTrack& track);

    // Blocks until the file's records are in tracks() (starting the read if needed).
    void waitForLoad();
    // Blocks until every pending save has reached the disk (or failed).
    void waitForSaves();

signals:
    // After every change; the three before it say which, for lists that follow row by row.
    void tracksChanged();
    // track went in at the top; replaced are the earlier records it stands in for.
    void trackAdded(const HistoryTrack& track, const QList<HistoryTrack>& replaced);
    void tracksRemoved(const QList<HistoryTrack>& removed);
    // The record with this id has new details; its place and link are as they were.
    void trackUpdated(const QUuid& id);
    // The whole list is another now (the file read, the library cleared).
    void tracksReplaced();
    void isLoadingChanged();
    void lastSaveErrorChanged();

private:
    enum class State
    {
        notLoaded,
        loading,
        loaded
    };
    struct Disk;
    struct Loaded
    {
        QList<HistoryTrack> tracks;
        // False when the store closed while another process held the library.
        bool claimed = true;
    };
    using Change = std::function<void(QList<HistoryTrack>&)>;
    // Applies a change to the list now and, while the file is being read, again on top of
    // what it holds once it is in. announce says what changed once the file is in; before
    // that, or without one, the whole list counts as replaced.
    void change(Change apply, const std::function<void()>& announce = {});
    void publishLoaded(Loaded loaded);
    // Makes the same change to the worker's copy of the list.
    void applyOnDisk(Change apply);
    void save();
    void saveEnded(const QString& error);

    QString m_folderPath;
    QString m_filePath;
    QList<HistoryTrack> m_tracks;
    State m_state = State::notLoaded;
    std::vector<Change> m_changesWhileLoading;
    QString m_lastSaveError;
    DesktopServices* m_desktop = nullptr;
    // One thread, so the read and the saves reach the file in the order they were asked for.
    QThreadPool m_worker;
    std::shared_ptr<Disk> m_disk;
    QFuture<Loaded> m_read;
};
