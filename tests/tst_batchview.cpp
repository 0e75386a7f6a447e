// SPDX-License-Identifier: GPL-3.0-or-later
#include "models/Links.h"
#include "models/QueueFile.h"
#include "services/BatchRunner.h"
#include "services/HistoryStore.h"
#include "support/ScreenFixture.h"
#include "support/TestSupport.h"
#include "views/batch/BatchQueueModel.h"
#include "views/batch/BatchView.h"

#include <QAbstractItemModelTester>
#include <QAccessible>
#include <QFileInfo>
#include <QImage>
#include <QLabel>
#include <QListView>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace ScreenFixture;

namespace {
// A stand-in yt-dlp that behaves by the last part of the link: "ok…" rips, "fail…" fails like a
// missing page, "once…" fails on its first try only, "slow…" reports 10 % and then hangs,
// "limited…" meets the site's rate limit. A paced run notes when it started.
// Listing playlist PLmix gives two entries with pages, a line that is not JSON and one entry
// without a page; PLfail does not exist.
const QByteArray kYtDlp = R"(#!/bin/sh
case "$1" in --version) echo 2023.03.04; exit 0;; esac
link=""; previous=""; item=""
for a in "$@"; do
  case "$a" in *youtu*) link="$a";; esac
  [ "$previous" = --playlist-items ] && item=" #$a"
  previous="$a"
done
case "$*" in *--flat-playlist*)
  case "$link" in *PLfail) echo "ERROR: [youtube:tab] PLfail: This playlist does not exist" >&2; exit 1;; esac
  echo '{"_type": "url", "url": "https://www.youtube.com/watch?v=ok1", "title": "One", "channel": "Chan", "duration": 205.0}'
  echo '{"_type": "url", "url": "https://www.youtube.com/watch?v=ok4", "title": "Four", "uploader": "Chan", "duration": null}'
  echo 'WARNING: not an entry'
  echo '{"_type": "video", "title": "Embedded", "playlist_index": 4, "duration": 61}'
  exit 0;;
esac
echo "$link$item" >> "$BATCH_LOG"
case "$*" in *"--sleep-requests 0.75"*) date +%s%N >> "$BATCH_OUT/paced.log";; esac
name=${link##*/}
case "$name" in
  fail*) echo "ERROR: [generic] $name: Unable to download webpage: HTTP Error 404: Not Found" >&2; exit 1;;
  once*) if [ ! -e "$BATCH_OUT/.$name" ]; then : > "$BATCH_OUT/.$name"; echo "ERROR: first try of $name" >&2; exit 1; fi;;
  slow*) echo "PROGRESS::  10.0%::1.00MiB/s::00:09::2.00MiB"; sleep 30 & wait; exit 0;;
  limited*) echo "ERROR: [youtube] $name: HTTP Error 429: Too Many Requests" >&2; exit 1;;
esac
echo "PROGRESS::  50.0%::1.00MiB/s::00:01::2.00MiB"
echo "[ExtractAudio] Destination: $name.mp3"
printf 'ID3' > "$name.mp3"
exit 0
)";

QString link(const QString& name)
{
    return u"https://youtu.be/" + name;
}
} // namespace

class TestBatchView : public QObject
{
    Q_OBJECT

    std::unique_ptr<ScreenFixture::Environment> m_env;
    std::unique_ptr<BatchView> m_view;

    QString file(const QString& name) const { return m_env->path() + u'/' + name; }

    QStringList ripped() const
    {
        return QString::fromUtf8(TestSupport::readFile(file(u"rips.log"_s)))
            .split(u'\n', Qt::SkipEmptyParts);
    }
    BatchRunner& runner() const { return m_env->batch(); }
    // The screen's parts, found as a screen reader finds them.
    QPlainTextEdit* editor() const
    {
        return findNamed<QPlainTextEdit>(m_view.get(), u"YouTube links, one per line"_s);
    }
    QAbstractButton* button(const QString& name) const
    {
        return findNamed<QAbstractButton>(m_view.get(), name);
    }
    QAbstractButton* ripAll() const
    {
        return button(u"Rip All (%1 Tracks)"_s.arg(runner().queue().size()));
    }
    QListView* queueList() const { return findNamed<QListView>(m_view.get(), u"Queue"_s); }
    BatchQueueModel* queueModel() const { return m_view->findChild<BatchQueueModel*>(); }
    bool shows(const QString& text) const { return reachable(m_view.get()).contains(text); }
    DownloadStatus::Kind kindAt(int row) const { return runner().queue().at(row).status.kind(); }
    void queue(const QStringList& names)
    {
        QStringList links;
        for (const QString& name : names)
            links << link(name);
        // Once the queue shows, links come straight to it, as a drop brings them.
        if (!editor()) {
            runner().addUrlsToQueue(links.join(u'\n'));
            return;
        }
        editor()->setPlainText(links.join(u'\n'));
        QTest::mouseClick(button(u"Add to Queue"_s), Qt::LeftButton);
    }

private slots:
    void init()
    {
        m_env = std::make_unique<ScreenFixture::Environment>(ScreenFixture::Tools::both);
        QVERIFY(QDir().mkpath(file(u"out"_s)));
        TestSupport::writeScript(file(u"tools/yt-dlp"_s), kYtDlp);
        qputenv("BATCH_OUT", file(u"out"_s).toUtf8());
        qputenv("BATCH_LOG", file(u"rips.log"_s).toUtf8());
        QVERIFY(m_env->checkTools());
        QVERIFY(m_env->dependencies().isReady());
        m_env->engine().setTargetFolder(QUrl::fromLocalFile(file(u"out"_s)));
        m_view = std::make_unique<BatchView>(m_env->batch());
        m_view->resize(880, 600);
        m_view->show();
    }

    void cleanup()
    {
        m_view.reset();
        if (m_env->engine().currentStatus().isBusy()) {
            m_env->engine().cancel();
            QTRY_VERIFY(!m_env->engine().currentStatus().isBusy());
        }
        m_env->history().waitForSaves();
        m_env.reset();
    }

    void lineFilter_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("queued");
        QTest::newRow("capitals") << u"https://YOUTUBE.COM/watch?v=a\nhttps://YouTu.be/b"_s
                                  << QStringList();
        QTest::newRow("any text with the domain")
            << u"see youtube.com for more\nnotes about youtu.be"_s
            << QStringList{u"see youtube.com for more"_s, u"notes about youtu.be"_s};
        QTest::newRow("windows line ends, unicode separator")
            << u"https://youtu.be/a\r\nhttps://youtu.be/b\u2028https://youtu.be/c\r\n"_s
            << QStringList{u"https://youtu.be/a"_s, u"https://youtu.be/b"_s,
                           u"https://youtu.be/c"_s};
    }
    void lineFilter()
    {
        QFETCH(QString, text);
        QFETCH(QStringList, queued);
        QAbstractItemModelTester tester(queueModel());
        editor()->setPlainText(text);
        QVERIFY(button(u"Add to Queue"_s)->isEnabled());
        QTest::mouseClick(button(u"Add to Queue"_s), Qt::LeftButton);
        QStringList urls;
        for (const BatchItem& item : runner().queue())
            urls << item.url;
        QCOMPARE(urls, queued);
        QCOMPARE(m_view->state(),
                 queued.isEmpty() ? BatchView::State::composing : BatchView::State::queued);
    }

    void countsAndStates()
    {
        QVERIFY(!shows(u"0 of 0 completed"_s));
        queue({u"ok1"_s});
        queue({u"ok2"_s, u"ok3"_s});
        QVERIFY(button(u"Rip All (3 Tracks)"_s));
        QVERIFY(shows(u"0 of 3 completed"_s));

        // A row draws its second line as soon as its video is known.
        QListView* list = queueList();
        const QModelIndex first = list->model()->index(0, 0);
        const QImage bare = list->viewport()->grab(list->visualRect(first)).toImage();
        VideoMetadata video;
        video.title = link(u"ok1"_s);
        video.channel = u"Channel"_s;
        video.duration = u"3:05"_s;
        runner().setMetadata(runner().queue().first().id, video);
        QCOMPARE(first.data(BatchQueueModel::DetailRole).toString(), u"Channel \u2022 3:05"_s);
        QVERIFY(list->viewport()->grab(list->visualRect(first)).toImage() != bare);
        // The row the keyboard is on is marked while the list has focus.
        const QModelIndex second = list->model()->index(1, 0);
        const auto look = [&](const QModelIndex& row) {
            return list->viewport()->grab(list->visualRect(row)).toImage();
        };
        const QImage before[] = {look(first), look(second)};
        QVERIFY(QTest::qWaitForWindowActive(m_view.get()));
        list->setCurrentIndex(second);
        list->setFocus(Qt::TabFocusReason);
        QVERIFY(look(second) != before[1]);
        QCOMPARE(look(first), before[0]);
        QTest::mouseClick(button(u"Clear Queue"_s), Qt::LeftButton);
        QCOMPARE(m_view->state(), BatchView::State::composing);
    }

    void runSkipsCompletedAndMovesOnAfterFailure()
    {
        queue({u"ok1"_s, u"ok2"_s, u"once3"_s, u"once4"_s, u"fail5"_s});
        QTest::mouseClick(ripAll(), Qt::LeftButton);
        QCOMPARE(m_view->state(), BatchView::State::processing);
        QTRY_COMPARE_WITH_TIMEOUT(m_view->state(), BatchView::State::queued, 20000);
        QCOMPARE(ripped().size(), 5);
        QVERIFY(shows(u"2 of 5 completed, 3 failed"_s));
        QCOMPARE(kindAt(2), DownloadStatus::Kind::failed);
        const QModelIndex failed = queueModel()->index(4);
        QVERIFY(failed.data(Qt::ToolTipRole).toString().contains(u"HTTP Error 404"));
        // Its second line says why, for everyone who cannot hover.
        QVERIFY(failed.data(BatchQueueModel::DetailRole).toString().contains(u"HTTP Error 404"));
        QCOMPARE(m_env->history().tracks().size(), 2);

        // Only the three unfinished items run again; the counts follow.
        QStringList counts;
        connect(&runner(), &BatchRunner::countsChanged, this,
                [&] { counts << runner().countText(); });
        runner().retryFailed();
        QTRY_COMPARE_WITH_TIMEOUT(m_view->state(), BatchView::State::queued, 20000);
        QStringList again = ripped().mid(5);
        again.sort();
        QCOMPARE(again, (QStringList{link(u"fail5"_s), link(u"once3"_s), link(u"once4"_s)}));
        QCOMPARE(counts.last(), u"4 of 5 completed, 1 failed"_s);
        // A failed item is not idle, so it offers no trash button.
        QVERIFY(!queueModel()->index(4).data(BatchQueueModel::ShowsTrashRole).toBool());
    }

    // Three run at once, each row its own; the converter's state is not theirs; a stop ends
    // all three and leaves no process and no scratch folder behind.
    void parallelRunAndStop()
    {
        m_env->engine().setSimultaneousRips(3);
        queue({u"slow1"_s, u"slow2"_s, u"slow3"_s, u"ok4"_s});
        QTest::mouseClick(ripAll(), Qt::LeftButton);
        for (int row = 0; row < 3; ++row)
            QTRY_COMPARE_WITH_TIMEOUT(runner().queue().at(row).status.progress(), 0.1, 10000);
        QCOMPARE(kindAt(3), DownloadStatus::Kind::idle);
        QCOMPARE(runner().runningCount(), 3);
        QVERIFY(!m_env->engine().currentStatus().isBusy());
        QVERIFY(!queueModel()->index(3).data(BatchQueueModel::ShowsTrashRole).toBool());
        QCOMPARE(EngineFixture::processesMentioning(u"youtu.be/slow"_s).size(), 3);
        QTest::mouseClick(button(u"Stop Batch"_s), Qt::LeftButton);
        QCOMPARE(m_view->state(), BatchView::State::queued);
        QTRY_COMPARE(runner().runningCount(), 0);
        QTRY_COMPARE(
            QDir(file(u"out"_s)).entryList(QDir::Dirs | QDir::NoDotAndDotDot | QDir::Hidden),
            QStringList());
        QTRY_VERIFY(EngineFixture::processesMentioning(u"youtu.be/slow"_s).isEmpty());
        QCOMPARE(ripped().size(), 3);
        for (int row = 0; row < 4; ++row)
            QCOMPARE(kindAt(row), DownloadStatus::Kind::idle);

        QAccessibleInterface* list = QAccessible::queryAccessibleInterface(queueList());
        list->child(1)->actionInterface()->doAction(u"Remove"_s);
        QCOMPARE(runner().queue().size(), 3);
    }

    // A playlist becomes rows of its entries (one already queued is not added again), each
    // ripped through its own page or, having none, as its item of the playlist; a listing
    // that fails says why.
    void playlists()
    {
        QAbstractItemModelTester tester(queueModel());
        editor()->setPlainText(link(u"ok1"_s) + u"\nhttps://www.youtube.com/playlist?list=PLmix\n"
                                                "https://www.youtube.com/playlist?list=PLfail"_s);
        QTest::mouseClick(button(u"Add to Queue"_s), Qt::LeftButton);
        QVERIFY(runner().isExpanding());
        const QStringList shown = reachable(m_view.get()).keys();
        QVERIFY(std::any_of(shown.cbegin(), shown.cend(), [](const QString& name) {
            return name.startsWith(u"Expanding playlist"_s);
        }));
        QTRY_VERIFY_WITH_TIMEOUT(!runner().isExpanding(), 10000);
        QVERIFY(shows(
            u"Could not list the playlist: [youtube:tab] PLfail: This playlist does not exist"_s));
        QCOMPARE(runner().queue().size(), 3);
        const BatchQueueModel* model = queueModel();
        QCOMPARE(model->index(1).data().toString(), u"Four"_s);
        QCOMPARE(model->index(1).data(BatchQueueModel::DetailRole).toString(), u"Chan"_s);
        QCOMPARE(model->index(2).data().toString(), u"Embedded"_s);
        QCOMPARE(model->index(2).data(BatchQueueModel::DetailRole).toString(), u"1:01"_s);

        QTest::mouseClick(ripAll(), Qt::LeftButton);
        QTRY_COMPARE_WITH_TIMEOUT(m_view->state(), BatchView::State::queued, 20000);
        QStringList log = ripped();
        log.sort();
        QCOMPARE(log, (QStringList{u"https://www.youtube.com/playlist?list=PLmix #4"_s,
                                   u"https://www.youtube.com/watch?v=ok4"_s, link(u"ok1"_s)}));
        QVERIFY(shows(u"3 of 3 completed"_s));
        // Clearing the queue takes the failure's line with it.
        runner().clearQueue();
        QVERIFY(!shows(
            u"Could not list the playlist: [youtube:tab] PLfail: This playlist does not exist"_s));
    }

    // What the library holds in the batch's format is skipped unless asked.
    void alreadyInLibrary()
    {
        HistoryTrack held;
        held.id = QUuid::createUuid();
        held.youtubeUrl = u"https://www.youtube.com/watch?v=ok1&t=3"_s;
        held.format = m_env->engine().selectedFormat();
        m_env->history().addTrack(held);
        queue({u"ok1"_s, u"ok2"_s});
        QVERIFY(runner().queue().at(0).alreadyInLibrary);
        QCOMPARE(queueModel()->index(0).data(Qt::AccessibleDescriptionRole).toString(),
                 u"Already in Library"_s);
        QTest::mouseClick(ripAll(), Qt::LeftButton);
        QTRY_COMPARE_WITH_TIMEOUT(m_view->state(), BatchView::State::queued, 20000);
        QCOMPARE(ripped(), QStringList{link(u"ok2"_s)});
        QVERIFY(shows(u"1 of 2 completed, 1 skipped"_s));
        runner().ripAgain(runner().queue().at(0).id);
        QTest::mouseClick(ripAll(), Qt::LeftButton);
        QTRY_COMPARE_WITH_TIMEOUT(m_view->state(), BatchView::State::queued, 20000);
        QVERIFY(shows(u"2 of 2 completed"_s));

        // The library's changes reach the batch as they happen: a removed record no longer
        // counts, another format never did, and a cleared library holds nothing.
        m_env->history().waitForLoad();
        for (const HistoryTrack& track : m_env->history().tracks()) {
            if (Links::videoId(track.youtubeUrl) == u"ok2")
                m_env->history().removeTrack(track);
        }
        HistoryTrack other = held;
        other.id = QUuid::createUuid();
        other.youtubeUrl = link(u"ok3"_s);
        other.filePath = u"/m/ok3.flac"_s;
        other.format = AudioFormat::flac;
        m_env->history().addTrack(other);
        const auto skipped = [&] {
            runner().clearQueue();
            queue({u"ok1"_s, u"ok2"_s, u"ok3"_s});
            QList<bool> flags;
            for (const BatchItem& item : runner().queue())
                flags << item.alreadyInLibrary;
            return flags;
        };
        QCOMPARE(skipped(), (QList<bool>{true, false, false}));
        m_env->history().clearAll();
        QCOMPARE(skipped(), (QList<bool>{false, false, false}));
    }

    // The unfinished items are saved as they change and come back with their choices, less
    // what reached the library since; a file that cannot be read is kept aside.
    void savedQueueComesBack()
    {
        const QString saved = file(u"queue.json"_s);
        runner().restoreSavedQueue();
        QTRY_VERIFY(runner().restoreNotice().isEmpty() && QFileInfo::exists(saved));
        // The same link pasted twice is ripped twice.
        queue({u"ok1"_s, u"fail2"_s, u"ok1"_s});
        QCOMPARE(runner().queue().size(), 3);
        QTest::mouseClick(ripAll(), Qt::LeftButton);
        QTRY_COMPARE_WITH_TIMEOUT(m_view->state(), BatchView::State::queued, 20000);
        QCOMPARE(ripped().count(link(u"ok1"_s)), 2);
        QVERIFY(shows(u"2 of 3 completed, 1 failed"_s));
        // A running item is saved to run again.
        queue({u"slow5"_s});
        runner().startBatchProcessing();
        QTRY_COMPARE(runner().runningCount(), 1);
        runner().flush();
        QFile running(saved);
        QVERIFY(running.open(QIODevice::ReadOnly));
        const QList<BatchItem> whileRunning = *QueueFile::decode(running.readAll());
        QCOMPARE(whileRunning.size(), 2);
        QCOMPARE(whileRunning.last().status.kind(), DownloadStatus::Kind::idle);
        runner().stopBatch();
        QTRY_COMPARE(runner().runningCount(), 0);
        runner().removeItem(runner().queue().last().id);
        m_env->engine().setSelectedFormat(AudioFormat::flac);
        queue({u"ok3"_s, u"ok4"_s});
        runner().flush();
        // ok3 reached the library before the queue was saved again.
        HistoryTrack done;
        done.id = QUuid::createUuid();
        done.batchItem = runner().queue().at(3).id;
        m_env->history().addTrack(done);

        BatchRunner again(m_env->engine(), m_env->history(), {.queueFile = saved});
        again.restoreSavedQueue();
        QTRY_COMPARE(again.queue().size(), 2);
        QCOMPARE(again.queue().at(0).status.error(), runner().queue().at(1).status.error());
        QCOMPARE(again.queue().at(1).url, link(u"ok4"_s));
        QCOMPARE(again.queue().at(1).choices.format, AudioFormat::flac);
        QCOMPARE(again.queue().at(1).choices.folder, file(u"out"_s));
        QCOMPARE(again.restoreNotice(), u"2 rips were waiting when Veldtone closed."_s);

        TestSupport::writeFile(saved, "{\"version\": 1, \"items\": ");
        BatchRunner unreadable(m_env->engine(), m_env->history(), {.queueFile = saved});
        unreadable.restoreSavedQueue();
        QTRY_VERIFY(!unreadable.restoreNotice().isEmpty());
        QVERIFY(unreadable.queue().isEmpty());
        QCOMPARE(TestSupport::readFile(saved + u".unreadable"_s), "{\"version\": 1, \"items\": ");
    }

    // A run the site limits puts its item back in line and pauses the batch, which fails
    // nothing behind it and goes on when asked.
    void rateLimitPausesTheBatch()
    {
        queue({u"limited1"_s, u"ok2"_s, u"ok3"_s});
        m_env->engine().setSimultaneousRips(1);
        QTest::mouseClick(ripAll(), Qt::LeftButton);
        QTRY_VERIFY(runner().isPaused());
        QCOMPARE(runner().failedCount(), 0);
        QCOMPARE(kindAt(0), DownloadStatus::Kind::idle);
        QVERIFY(runner().isProcessing());
        QVERIFY(shows(
            u"YouTube is limiting requests; the batch waits 30 minutes before it goes on."_s));
        QTest::qWait(300);
        QCOMPARE(ripped().size(), 1);
        QTest::mouseClick(button(u"Resume now"_s), Qt::LeftButton);
        QTRY_COMPARE(ripped().size(), 2);
        // Limited again: the second try ends as the first did.
        QTRY_VERIFY(runner().isPaused());
        runner().stopBatch();
        QVERIFY(!runner().isPaused());
    }

    // A batch of more than 50 YouTube links starts one rip at a time, apart, each sleeping
    // between its requests; raising the rips at once starts more at once.
    void pacingAndMoreAtOnce()
    {
        QStringList many;
        for (int i = 0; i < 51; ++i)
            many << u"slow%1"_s.arg(i);
        queue(many);
        m_env->engine().setSimultaneousRips(4);
        QTest::mouseClick(ripAll(), Qt::LeftButton);
        const auto paced = [this] {
            return QString::fromUtf8(TestSupport::readFile(file(u"out/paced.log"_s)))
                .split(u'\n', Qt::SkipEmptyParts);
        };
        QTRY_COMPARE_WITH_TIMEOUT(paced().size(), 4, 10000);
        QCOMPARE(runner().runningCount(), 4);
        const QStringList starts = paced();
        for (int i = 1; i < starts.size(); ++i)
            QVERIFY(starts.at(i).toLongLong() - starts.at(i - 1).toLongLong() >= 50'000'000);
        runner().stopBatch();
        QTRY_COMPARE(runner().runningCount(), 0);

        // Short batches are not paced; more at once start at once.
        runner().clearQueue();
        m_env->engine().setSimultaneousRips(1);
        queue({u"slow1"_s, u"slow2"_s, u"slow3"_s});
        QTest::mouseClick(ripAll(), Qt::LeftButton);
        QTRY_COMPARE(runner().runningCount(), 1);
        m_env->engine().setSimultaneousRips(3);
        QCOMPARE(runner().runningCount(), 3);
        runner().stopBatch();
        QTRY_COMPARE(runner().runningCount(), 0);
        QCOMPARE(TestSupport::readFile(file(u"out/paced.log"_s)).count('\n'), 4);
    }
};

QTEST_MAIN(TestBatchView)
#include "tst_batchview.moc"
