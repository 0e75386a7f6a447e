// SPDX-License-Identifier: GPL-3.0-or-later
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
        DetailRole,  // "channel • duration" once the video is known, a failure's reason, or empty
        SkippedRole, // bool: the library has it already
    };

    explicit BatchQueueModel(BatchRunner& runner, QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

    // "Waiting", "Downloading 42%", "Converting...", "Completed", "Failed: <error>".
    // skipped: an item the library holds already, which waits to be asked for.
    static QString statusText(const DownloadStatus& status, bool skipped = false);

private:
    BatchRunner& m_runner;
};
