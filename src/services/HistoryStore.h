#pragma once

#include "models/HistoryTrack.h"

#include <QList>
#include <QObject>
#include <QSet>
#include <QString>

#include <memory>

class DesktopServices;

// The persistent library: every finished track, newest first, in one JSON file.
class HistoryStore : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QList<HistoryTrack> tracks READ tracks NOTIFY tracksChanged)

public:
    // folderPath holds "history.json"; it is created when missing. desktop reveals and opens
    // files; the store takes no ownership (nullptr: the system's file manager).
    explicit HistoryStore(const QString& folderPath, DesktopServices* desktop = nullptr,
                          QObject* parent = nullptr);
    ~HistoryStore() override;

    static HistoryStore& shared();
    // The platform data folder + "/Veldtone".
    static QString defaultFolder();

    const QList<HistoryTrack>& tracks() const { return m_tracks; }
    QString fileURL() const { return m_filePath; }

    void addTrack(const HistoryTrack& track);
    void removeTrack(const QSet<int>& positions);
    void removeTrack(const HistoryTrack& track);
    void clearAll();
    void showInFinder(const HistoryTrack& track);
    void openFile(const HistoryTrack& track);

    // Blocks until every pending save has reached the disk.
    void waitForSaves();

signals:
    void tracksChanged();

private:
    void save();

    QString m_folderPath;
    QString m_filePath;
    QList<HistoryTrack> m_tracks;
    DesktopServices* m_desktop = nullptr;
    std::unique_ptr<DesktopServices> m_ownedDesktop;
    struct SaveQueue;
    std::unique_ptr<SaveQueue> m_saves;
};
