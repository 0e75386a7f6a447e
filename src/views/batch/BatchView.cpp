// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/batch/BatchView.h"

#include "models/Links.h"
#include "services/BatchRunner.h"
#include "services/FollowService.h"
#include "views/batch/BatchItemDelegate.h"
#include "views/batch/BatchQueueModel.h"
#include "views/components/AccessibleListView.h"
#include "views/components/ActivitySpinner.h"
#include "views/components/LineBreaker.h"
#include "views/components/RoundedPanel.h"
#include "views/components/Symbols.h"
#include "views/components/Theme.h"

#include <QCheckBox>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStackedWidget>
#include <QVBoxLayout>

using namespace Theme;

namespace {
QString removeActionName()
{
    return QCoreApplication::translate("BatchView", "Remove");
}

QString retryActionName()
{
    return QCoreApplication::translate("BatchView", "Retry");
}

QString ripAgainActionName()
{
    return QCoreApplication::translate("BatchView", "Rip Again");
}

QString followActionName()
{
    return QCoreApplication::translate("BatchView", "Follow Playlist");
}

// The queue's rows, with their trash button as a named accessible action.
class BatchListView : public AccessibleListView
{
public:
    BatchListView(BatchRunner& runner, FollowService* following, QWidget* parent = nullptr)
        : AccessibleListView(parent)
        , m_runner(runner)
        , m_following(following)
    {}

    QStringList rowActionNames(int row) const override
    {
        const QModelIndex index = model()->index(row, 0);
        QStringList names;
        if (index.data(BatchQueueModel::StatusRole).value<DownloadStatus>().kind() ==
            DownloadStatus::Kind::failed)
            names << retryActionName();
        if (index.data(BatchQueueModel::SkippedRole).toBool())
            names << ripAgainActionName();
        if (index.data(BatchQueueModel::ShowsTrashRole).toBool())
            names << removeActionName();
        // A row listed from a playlist or channel offers to follow it.
        if (m_following && row < m_runner.queue().size() &&
            !m_runner.queue().at(row).playlist.isEmpty())
            names << followActionName();
        return names;
    }
    void triggerRowAction(int row, const QString& name) override
    {
        const QUuid id = model()->index(row, 0).data(BatchQueueModel::IdRole).toUuid();
        if (name == removeActionName())
            m_runner.removeItem(id);
        else if (name == retryActionName())
            m_runner.retry(id);
        else if (name == ripAgainActionName())
            m_runner.ripAgain(id);
        else if (name == followActionName() && m_following && row < m_runner.queue().size())
            m_following->follow(m_runner.queue().at(row).playlist);
    }

protected:
    // The row's actions, for the mouse as for a screen reader.
    void contextMenuEvent(QContextMenuEvent* event) override
    {
        const QModelIndex index = indexAt(event->pos());
        const QStringList names = index.isValid() ? rowActionNames(index.row()) : QStringList();
        if (names.isEmpty())
            return;
        QMenu menu(this);
        for (const QString& name : names)
            menu.addAction(name);
        if (const QAction* chosen = menu.exec(event->globalPos()))
            triggerRowAction(index.row(), chosen->text());
    }

private:
    BatchRunner& m_runner;
    FollowService* m_following;
};

QLabel* textLabel(const QString& text, int pixelSize, QFont::Weight weight, bool secondaryColour)
{
    QLabel* result = label(text, Theme::font(pixelSize, weight));
    if (secondaryColour)
        setTextColor(result, secondaryText(result->palette()));
    return result;
}

QPushButton* button(const QString& text)
{
    auto* result = new QPushButton(text);
    result->setFont(Theme::font(12));
    result->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    return result;
}

// The regular-sized prominent button with a white symbol before its title.
QPushButton* prominentButton(const QString& text, const QString& symbolName, const QColor& tint)
{
    QPushButton* result = button(text);
    makeProminent(result, tint, ControlSize::regular);
    result->setIcon(Symbols::icon(symbolName, Qt::white));
    result->setIconSize(QSize(13, 13));
    return result;
}
} // namespace

BatchView::BatchView(BatchRunner& runner, FollowService* following, QWidget* parent)
    : ThemedScreen(Scrolling::fills, parent)
    , m_runner(&runner)
    , m_following(following)
    , m_model(new BatchQueueModel(*m_runner, this))
{
    setAccessibleName(tr("Batch"));
    buildContent();
    connect(m_runner, &BatchRunner::queueChanged, this, &BatchView::updateState);
    connect(m_runner, &BatchRunner::rowsAppended, this, &BatchView::updateState);
    connect(m_runner, &BatchRunner::expansionChanged, this, &BatchView::updateState);
    connect(m_runner, &BatchRunner::isProcessingChanged, this, &BatchView::updateState);
    connect(m_runner, &BatchRunner::countsChanged, this, &BatchView::updateState);
    connect(m_runner, &BatchRunner::restoreChanged, this, &BatchView::updateState);
    connect(m_runner, &BatchRunner::pauseChanged, this, &BatchView::updateState);
}

void BatchView::buildContent()
{
    const QString typed = m_editor ? m_editor->toPlainText() : QString();
    QWidget* content = beginContent();
    auto* column = new QVBoxLayout(content);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(16);
    column->addWidget(buildHeader());
    column->addWidget(buildExpansionLine());
    column->addWidget(buildNoticeLines());

    m_stack = new QStackedWidget;
    m_stack->addWidget(buildEditor());
    auto* list = new BatchListView(*m_runner, m_following);
    m_list = list;
    m_list->setAccessibleName(tr("Queue"));
    m_list->setModel(m_model);
    m_list->setUniformItemSizes(true);
    m_list->setFrameShape(QFrame::NoFrame);
    m_list->setMouseTracking(true);
    m_list->setSelectionMode(QAbstractItemView::NoSelection);
    m_list->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    // Rows shorten their texts to the width; there is nothing to scroll sideways to.
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    auto* delegate = new BatchItemDelegate(m_list);
    m_list->setItemDelegate(delegate);
    connect(delegate, &BatchItemDelegate::removeRequested, m_runner, &BatchRunner::removeItem);
    m_stack->addWidget(m_list);
    // The editor sits at the top with space below it; the list takes the space.
    column->addWidget(m_stack, 1);
    column->addWidget(buildFooter());
    m_editor->setPlainText(typed);
    updateState();
    finishContent(content);
}

BatchView::~BatchView() = default;

QWidget* BatchView::buildHeader()
{
    auto* header = new QWidget;
    auto* row = new QHBoxLayout(header);
    row->setContentsMargins(20, 16, 20, 0);
    auto* titles = new QVBoxLayout;
    titles->setSpacing(2);
    titles->addWidget(textLabel(tr("Batch Audio Ripper"), 20, QFont::Bold, false));
    titles->addWidget(textLabel(tr("Paste multiple YouTube links to rip all audio at once"), 12,
                                QFont::Normal, true));
    row->addLayout(titles);
    row->addStretch(1);
    m_clearQueue = button(tr("Clear Queue"));
    m_clearQueue->setFont(Theme::font(11));
    connect(m_clearQueue, &QPushButton::clicked, m_runner, &BatchRunner::clearQueue);
    row->addWidget(m_clearQueue);
    return header;
}

QWidget* BatchView::buildExpansionLine()
{
    m_expansionLine = new QWidget;
    auto* row = new QHBoxLayout(m_expansionLine);
    row->setContentsMargins(20, 0, 20, 0);
    row->setSpacing(8);
    m_expansionSpinner = new ActivitySpinner(14, m_expansionLine);
    row->addWidget(m_expansionSpinner);
    m_expansionText = textLabel(QString(), 12, QFont::Medium, true);
    m_expansionText->setWordWrap(true);
    row->addWidget(m_expansionText, 1);
    return m_expansionLine;
}

QWidget* BatchView::buildNoticeLines()
{
    auto* lines = new QWidget;
    auto* column = new QVBoxLayout(lines);
    column->setContentsMargins(20, 0, 20, 0);
    column->setSpacing(6);
    const auto line = [&](QLabel*& text, const QList<QPushButton*>& buttons) {
        auto* widget = new QWidget;
        auto* row = new QHBoxLayout(widget);
        row->setContentsMargins(0, 0, 0, 0);
        row->setSpacing(8);
        text = textLabel(QString(), 12, QFont::Medium, false);
        text->setWordWrap(true);
        setTextColor(text, orange(palette()));
        row->addWidget(text, 1);
        for (QPushButton* each : buttons) {
            each->setFont(Theme::font(11));
            row->addWidget(each);
        }
        column->addWidget(widget);
        return widget;
    };
    // What came back from the last run, and the choice to go on with it.
    m_resume = button(tr("Resume"));
    connect(m_resume, &QPushButton::clicked, m_runner, [this] {
        m_runner->dismissRestoreNotice();
        m_runner->startBatchProcessing();
    });
    m_clearRestored = button(tr("Clear"));
    connect(m_clearRestored, &QPushButton::clicked, m_runner, [this] {
        m_runner->dismissRestoreNotice();
        m_runner->clearQueue();
    });
    m_dismissRestore = button(tr("Dismiss"));
    connect(m_dismissRestore, &QPushButton::clicked, m_runner, &BatchRunner::dismissRestoreNotice);
    m_restoreLine = line(m_restoreText, {m_resume, m_clearRestored, m_dismissRestore});
    // A batch waiting out the site's limit.
    QPushButton* resumeNow = button(tr("Resume now"));
    connect(resumeNow, &QPushButton::clicked, m_runner, &BatchRunner::resumeNow);
    m_pauseLine = line(m_pauseText, {resumeNow});
    return lines;
}

QWidget* BatchView::buildEditor()
{
    auto* page = new QWidget;
    auto* column = new QVBoxLayout(page);
    column->setContentsMargins(20, 0, 20, 0);
    column->setSpacing(10);
    column->addWidget(
        textLabel(tr("Enter YouTube links (one per line):"), 12, QFont::Medium, true));

    auto* frame = new RoundedPanel(QPalette::Base, 0.8, 8);
    frame->setOutline(QColor(142, 142, 147, 51));
    frame->setFixedHeight(140);
    auto* inset = new QVBoxLayout(frame);
    inset->setContentsMargins(8, 8, 8, 8);
    m_editor = new QPlainTextEdit;
    m_editor->setAccessibleName(tr("YouTube links, one per line"));
    m_editor->setFont(Theme::font(12, QFont::Normal, Face::monospaced));
    m_editor->setFrameShape(QFrame::NoFrame);
    m_editor->setStyleSheet(QStringLiteral("QPlainTextEdit { background: transparent; }"));
    m_editor->setTabChangesFocus(true);
    inset->addWidget(m_editor);
    column->addWidget(frame);

    auto* actions = new QHBoxLayout;
    m_paste = button(tr("Paste Clipboard"));
    connect(m_paste, &QPushButton::clicked, this, &BatchView::pasteClipboard);
    actions->addWidget(m_paste);
    actions->addStretch(1);
    // Per add, never saved: the playlists among the links become albums.
    m_asAlbum = new QCheckBox(tr("Rip playlists as albums"));
    m_asAlbum->setFont(Theme::font(12));
    actions->addWidget(m_asAlbum);
    m_add =
        prominentButton(tr("Add to Queue"), QStringLiteral("plus.circle.fill"), accent(palette()));
    connect(m_add, &QPushButton::clicked, this, &BatchView::addUrlsToQueue);
    actions->addWidget(m_add);
    column->addLayout(actions);
    column->addStretch(1);

    connect(m_editor, &QPlainTextEdit::textChanged, this,
            [this] { m_add->setEnabled(!m_editor->toPlainText().trimmed().isEmpty()); });
    m_add->setEnabled(false);
    return page;
}

QWidget* BatchView::buildFooter()
{
    m_footer = new QWidget;
    const auto [column, line] = Theme::lines(m_footer, {20, 0, 20, 16}, 8, 16);
    m_count = textLabel(QString(), 12, QFont::Normal, true);
    line->addWidget(m_count);
    line->addStretch(1);
    auto* buttons = new QWidget(m_footer);
    QHBoxLayout* row = Theme::row(buttons, 16);
    m_retryFailed = button(tr("Retry Failed"));
    connect(m_retryFailed, &QPushButton::clicked, m_runner, &BatchRunner::retryFailed);
    row->addWidget(m_retryFailed);
    m_stop = button(tr("Stop Batch"));
    m_stop->setStyleSheet(u"QPushButton { color: " + Theme::red(palette()).name() + u"; }");
    connect(m_stop, &QPushButton::clicked, m_runner, &BatchRunner::stopBatch);
    row->addWidget(m_stop);
    m_addMore = button(tr("Add More URLs"));
    connect(m_addMore, &QPushButton::clicked, m_runner, &BatchRunner::clearQueue);
    row->addWidget(m_addMore);
    m_ripAll =
        prominentButton(QString(), QStringLiteral("arrow.down.circle.fill"), orange(palette()));
    connect(m_ripAll, &QPushButton::clicked, m_runner, &BatchRunner::startBatchProcessing);
    row->addWidget(m_ripAll);
    new LineBreaker(m_footer, line, column, buttons);
    return m_footer;
}

BatchView::State BatchView::state() const
{
    if (m_runner->isProcessing())
        return State::processing;
    return m_runner->queue().isEmpty() ? State::composing : State::queued;
}

void BatchView::updateState()
{
    const State now = state();
    const bool queueShown = !m_runner->queue().isEmpty();
    m_stack->setCurrentIndex(queueShown ? 1 : 0);
    m_clearQueue->setVisible(now == State::queued);
    m_footer->setVisible(queueShown);
    m_count->setText(m_runner->countText());
    m_stop->setVisible(now == State::processing);
    m_retryFailed->setVisible(now == State::queued && m_runner->failedCount() > 0);
    m_addMore->setVisible(now != State::processing);
    m_ripAll->setVisible(now != State::processing);
    m_ripAll->setText(tr("Rip All (%n Tracks)", nullptr, int(m_runner->queue().size())));
    m_restoreLine->setVisible(!m_runner->restoreNotice().isEmpty());
    m_restoreText->setText(m_runner->restoreNotice());
    m_resume->setVisible(m_runner->hasRestoredItems() && now != State::processing);
    m_clearRestored->setVisible(m_runner->hasRestoredItems() && now != State::processing);
    m_dismissRestore->setVisible(!m_runner->hasRestoredItems() || now == State::processing);
    m_pauseLine->setVisible(m_runner->isPaused());
    m_pauseText->setText(m_runner->pauseText());
    const QString expansion = m_runner->expansionText();
    m_expansionLine->setVisible(!expansion.isEmpty());
    m_expansionSpinner->setVisible(m_runner->isExpanding());
    m_expansionText->setText(expansion);
    // A listing that failed reads as a warning, not as progress.
    setTextColor(m_expansionText,
                 m_runner->isExpanding() ? secondaryText(palette()) : orange(palette()));
}

void BatchView::pasteClipboard()
{
    const QMimeData* clipboard = QGuiApplication::clipboard()->mimeData();
    if (!clipboard || !clipboard->hasText())
        return;
    m_editor->setPlainText(Links::pasted(m_editor->toPlainText(), clipboard->text()));
    m_editor->moveCursor(QTextCursor::End);
}

void BatchView::addUrlsToQueue()
{
    m_runner->addUrlsToQueue(m_editor->toPlainText(), m_asAlbum->isChecked());
    // Emptied whether or not a line was kept.
    m_editor->clear();
}
