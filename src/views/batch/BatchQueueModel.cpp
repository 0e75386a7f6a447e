// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/batch/BatchQueueModel.h"

#include "models/DisplayTexts.h"
#include "models/ToolAdvice.h"
#include "services/BatchRunner.h"
#include "services/DownloadEngine.h"

BatchQueueModel::BatchQueueModel(BatchRunner& runner, QObject* parent)
    : QAbstractListModel(parent)
    , m_runner(runner)
{
    connect(&m_runner, &BatchRunner::queueAboutToChange, this, &BatchQueueModel::beginResetModel);
    connect(&m_runner, &BatchRunner::queueChanged, this, &BatchQueueModel::endResetModel);
    connect(&m_runner, &BatchRunner::rowsAboutToBeAppended, this,
            [this](int first, int last) { beginInsertRows({}, first, last); });
    connect(&m_runner, &BatchRunner::rowsAppended, this, &BatchQueueModel::endInsertRows);
    connect(&m_runner, &BatchRunner::itemChanged, this,
            [this](int row) { emit dataChanged(index(row), index(row)); });
    // Trash buttons come and go with the batch.
    connect(&m_runner, &BatchRunner::isProcessingChanged, this, [this] {
        if (rowCount() > 0)
            emit dataChanged(index(0), index(rowCount() - 1), {ShowsTrashRole});
    });
}

int BatchQueueModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_runner.queue().size());
}

QString BatchQueueModel::statusText(const DownloadStatus& status, bool skipped)
{
    switch (status.kind()) {
    case DownloadStatus::Kind::idle:
        return skipped ? tr("Already in Library") : tr("Waiting");
    case DownloadStatus::Kind::downloading:
        return tr("Downloading %1%").arg(int(status.progress() * 100));
    case DownloadStatus::Kind::converting:
        return tr("Converting...");
    case DownloadStatus::Kind::completed:
        return tr("Completed");
    case DownloadStatus::Kind::failed:
        return tr("Failed: %1").arg(status.error());
    }
    return {};
}

QVariant BatchQueueModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const BatchItem& item = m_runner.queue().at(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return item.metadata ? item.metadata->title : item.url;
    case Qt::AccessibleTextRole:
        return QString(QString::number(index.row() + 1) + u". " +
                       (item.metadata ? item.metadata->title : item.url));
    case Qt::AccessibleDescriptionRole:
        return statusText(item.status, item.alreadyInLibrary);
    case Qt::ToolTipRole: {
        if (item.status.kind() != DownloadStatus::Kind::failed)
            return {};
        const QString advice = ToolAdvice::text(ToolAdvice::forError(item.status.error()));
        return advice.isEmpty() ? item.status.error() : item.status.error() + u'\n' + advice;
    }
    case NumberRole:
        return index.row() + 1;
    case UrlRole:
        return item.url;
    case IdRole:
        return item.id;
    case StatusRole:
        return QVariant::fromValue(item.status);
    case ShowsTrashRole:
        return !m_runner.isProcessing() && item.status.kind() == DownloadStatus::Kind::idle;
    case SkippedRole:
        return item.alreadyInLibrary;
    case DetailRole: {
        // A failed row says why on its second line, not only in a tooltip.
        if (item.status.kind() == DownloadStatus::Kind::failed)
            return item.status.error().section(u'\n', 0, 0);
        // A playlist's listing may know only one of the two; a rip of a page with several
        // videos says how many more files it made.
        QStringList parts;
        if (item.metadata) {
            parts << item.metadata->channel << item.metadata->duration;
            parts.removeAll(QString());
        }
        if (item.moreFiles > 0)
            parts << DownloadEngine::moreTracksText(item.moreFiles);
        return parts.join(DisplayTexts::kSeparator);
    }
    default:
        return {};
    }
}
