// The batch and library screens end to end: the real yt-dlp and ffmpeg rip pages served on
// loopback, the real store records them, and the real player plays one from its row.
#include "services/ArtworkCache.h"
#include "services/AudioPlayerService.h"
#include "services/BatchRunner.h"
#include "services/HistoryStore.h"
#include "support/EngineFixture.h"
#include "support/MediaServer.h"
#include "views/batch/BatchQueueModel.h"
#include "views/batch/BatchView.h"
#include "views/library/HistoryView.h"
#include "views/library/LibraryListModel.h"
#include "views/library/TrackDelegate.h"
#include "views/library/TrackListView.h"

#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>

using namespace Qt::StringLiterals;

class TestLibraryBatchEndToEnd : public QObject
{
    Q_OBJECT

private slots:
    void batchOfThreeThenLibrary()
    {
        MediaServer media;
        QVERIFY2(media.start(), qPrintable(media.errorString()));
        // The batch keeps only lines naming the video service; a query carries the name.
        const QStringList links{media.titledPageUrl(u"One"_s).toString() + u"?from=youtube.com",
                                media.missingUrl().toString() + u"?from=youtu.be",
                                media.titledPageUrl(u"Three"_s).toString() + u"?from=youtube.com"};

        EngineFixture fixture;
        QVERIFY(fixture.isReady());
        BatchView batch(fixture.engine());
        batch.resize(880, 600);
        batch.show();
        batch.editor()->setPlainText(links.join(u'\n'));
        QTest::mouseClick(batch.addButton(), Qt::LeftButton);
        QCOMPARE(batch.ripAllButton()->text(), u"Rip All (3 Tracks)"_s);
        QTest::mouseClick(batch.ripAllButton(), Qt::LeftButton);
        QCOMPARE(batch.state(), BatchView::State::processing);
        QTRY_COMPARE_WITH_TIMEOUT(batch.state(), BatchView::State::queued, 240000);

        const auto kind = [&](int row) { return batch.runner().queue().at(row).status.kind(); };
        QCOMPARE(kind(0), DownloadStatus::Kind::completed);
        QCOMPARE(kind(1), DownloadStatus::Kind::failed);
        QCOMPARE(kind(2), DownloadStatus::Kind::completed);
        const QString tooltip = batch.model()->index(1).data(Qt::ToolTipRole).toString();
        QVERIFY2(tooltip.contains(u"HTTP Error 404"), qPrintable(tooltip));
        QCOMPARE(batch.countLabel()->text(), u"2 of 3 completed"_s);

        // The library lists the two new tracks, newest first.
        AudioPlayerService player;
        ArtworkCache artwork(fixture.rootPath() + u"/artwork");
        HistoryView library(fixture.history(), player, artwork);
        library.resize(880, 600);
        library.show();
        QVERIFY(QTest::qWaitForWindowExposed(&library));
        LibraryListModel* model = library.model();
        QCOMPARE(model->rowCount(), 2);
        QCOMPARE(model->trackAt(0).title, u"Three"_s);
        QCOMPARE(model->trackAt(1).title, u"One"_s);

        // Playing the second row from its button shows the pause symbol on that row only;
        // pressing it again pauses.
        QListView* list = library.listView();
        const auto geometry =
            TrackDelegate::geometry(list->visualRect(model->index(1)), model->trackAt(1));
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, geometry.playButton.center());
        QTRY_VERIFY(player.isPlaying());
        QCOMPARE(player.currentTrack()->id, model->trackAt(1).id);
        QCOMPARE(library.listView()->rowActionNames(1).first(), TrackListView::pauseAction());
        QCOMPARE(library.listView()->rowActionNames(0).first(), TrackListView::playAction());
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, geometry.playButton.center());
        QVERIFY(!player.isPlaying());
        QCOMPARE(library.listView()->rowActionNames(1).first(), TrackListView::playAction());
        player.stop();
    }
};

QTEST_MAIN(TestLibraryBatchEndToEnd)
#include "tst_library_batch_e2e.moc"
