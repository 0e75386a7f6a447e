// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/components/ThemedScreen.h"

class ActivitySpinner;
class BatchQueueModel;
class BatchRunner;
class FollowService;
class QCheckBox;
class QLabel;
class QListView;
class QPlainTextEdit;
class QPushButton;
class QStackedWidget;

// The batch screen: many pasted links become a queue that is ripped one item after another.
// The queue and its sequencing live in the BatchRunner service, so a batch goes on while
// another screen shows.
class BatchView : public ThemedScreen
{
    Q_OBJECT

public:
    // following: takes a row's playlist with "Follow Playlist" (nullptr: not offered).
    explicit BatchView(BatchRunner& runner, FollowService* following = nullptr,
                       QWidget* parent = nullptr);
    ~BatchView() override;

    enum class State
    {
        composing,
        queued,
        processing
    };
    State state() const;

private:
    void buildContent() override;
    QWidget* buildHeader();
    QWidget* buildExpansionLine();
    // The queue that came back from the last run, and a batch paused by the site.
    QWidget* buildNoticeLines();
    QWidget* buildEditor();
    QWidget* buildFooter();
    void updateState();
    void pasteClipboard();
    void addUrlsToQueue();

    BatchRunner* m_runner;
    FollowService* m_following;
    BatchQueueModel* m_model;

    QPushButton* m_clearQueue = nullptr;
    QWidget* m_restoreLine = nullptr;
    QLabel* m_restoreText = nullptr;
    QPushButton* m_resume = nullptr;
    QPushButton* m_clearRestored = nullptr;
    QPushButton* m_dismissRestore = nullptr;
    QWidget* m_pauseLine = nullptr;
    QLabel* m_pauseText = nullptr;
    QWidget* m_expansionLine = nullptr;
    ActivitySpinner* m_expansionSpinner = nullptr;
    QLabel* m_expansionText = nullptr;
    QStackedWidget* m_stack = nullptr;
    QCheckBox* m_asAlbum = nullptr;
    QPlainTextEdit* m_editor = nullptr;
    QPushButton* m_paste = nullptr;
    QPushButton* m_add = nullptr;
    QListView* m_list = nullptr;
    QWidget* m_footer = nullptr;
    QLabel* m_count = nullptr;
    QPushButton* m_retryFailed = nullptr;
    QPushButton* m_stop = nullptr;
    QPushButton* m_addMore = nullptr;
    QPushButton* m_ripAll = nullptr;
};
