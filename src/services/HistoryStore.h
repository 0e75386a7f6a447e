#pragma once

#include "models/HistoryTrack.h"

#include <QByteArrayView>
#include <QList>
#include <QObject>
#include <QSet>
#include <QString>
#include <functional>
#include <memory>

class DesktopServices;

// The persistent library: every finished track, newest first, in one JSON file.
class HistoryStore : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QList<HistoryTrack> tracks READ tracks NOTIFY tracksChanged)

public:
    // folderPath holds "history.json"; it is created when missing and the file is loaded at once.
    // desktop reveals and opens files; the store takes no ownership (nullptr: the system's).
    explicit HistoryStore(const QString& folderPath, DesktopServices* desktop = nullptr,
                          QObject* parent = nullptr);
    // Waits for the last pending save, so that no change is lost at exit.
    ~HistoryStore() override;

    static HistoryStore& shared();
    // The platform data folder + "/Veldtone".
    static QString defaultFolder();

    const QList<HistoryTrack>& tracks() const { return m_tracks; }
    QString fileURL() const { return m_filePath; }

    // Puts track first, replacing any record with the same file path or id.
    void addTrack(const HistoryTrack& track);
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

    // Blocks until every pending save has reached the disk.
    void waitForSaves();

signals:
    void tracksChanged();

private:
    void load();
    void decodeLoaded(const QByteArray& data, qsizetype size);
    // Removes the records at the positions drop() holds for, with their cached bytes.
    void removeWhere(const std::function<bool(qsizetype)>& drop);
    void changed();

    QString m_folderPath;
    QString m_filePath;
    QList<HistoryTrack> m_tracks;
    // Each record's bytes as the file holds them, in the order of m_tracks, so that a save
    // writes what it already has instead of encoding the whole library again. Empty for a
    // record still to be encoded; a loaded record's bytes point into m_loadedFile.
    QList<QByteArray> m_encoded;
    QByteArray m_loadedFile;
    DesktopServices* m_desktop = nullptr;
    struct SaveQueue;
    std::unique_ptr<SaveQueue> m_saves;
};
