#pragma once

#include "models/DownloadStatus.h"

#include <QAbstractListModel>

class BatchRunner;

// The batch queue as list rows: position, link, status, and whether the row offers its trash
// button (idle items while no batch runs).
class BatchQueueModel : public QAbstractListModel
{
    Q_OBJECT

public:
    enum Role
    {
        NumberRole = Qt::UserRole + 1,
        UrlRole,
        IdRole,
        StatusRole, // DownloadStatus
        ShowsTrashRole,
        DetailRole, // "channel • duration" once the video is known, else empty
    };

    explicit BatchQueueModel(BatchRunner& runner, QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

    // "Waiting", "Downloading 42%", "Converting...", "Completed", "Failed: <error>".
    static QString statusText(const DownloadStatus& status);

private:
    BatchRunner& m_runner;
};
