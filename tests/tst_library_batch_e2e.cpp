// The batch and library screens end to end: the real yt-dlp and ffmpeg rip pages served on
// loopback, the real store records them, and the real player plays one from its row.
#include "services/AudioPlayerService.h"
#include "services/BatchRunner.h"
#include "services/DownloadEngine.h"
#include "services/HistoryStore.h"
#include "support/EngineFixture.h"
#include "support/MediaServer.h"
#include "views/ArtworkCache.h"
#include "views/BatchQueueModel.h"
#include "views/BatchView.h"
#include "views/HistoryView.h"
#include "views/LibraryListModel.h"
#include "views/TrackDelegate.h"
#include "views/TrackListView.h"

#include <QHttpServer>
#include <QLabel>
#include <QPlainTextEdit>
#include <QProcess>
#include <QPushButton>
#include <QStandardPaths>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
// A watch page named title whose video is the media server's clip.
QByteArray pageFor(const QString& title, const MediaServer& media)
{
    const QByteArray name = title.toUtf8();
    const QByteArray json =
        "{\"@context\": \"https://schema.org\", \"@type\": \"VideoObject\", \"name\": \"" + name +
        "\", \"author\": {\"@type\": \"Person\", \"name\": \"" + MediaServer::kAuthor +
        "\"}, \"duration\": \"PT" + QByteArray::number(media.durationSeconds()) +
        "S\", \"uploadDate\": \"2024-05-01\", \"thumbnailUrl\": \"" +
        media.thumbnailUrl().toEncoded() + "\", \"contentUrl\": \"" + media.mediaUrl().toEncoded() +
        "\"}";
    return "<!DOCTYPE html>\n<html><head><meta charset=\"utf-8\"><title>" + name +
           "</title>\n<script type=\"application/ld+json\">" + json +
           "</script>\n</head><body><p>" + name + "</p></body></html>\n";
}
} // namespace

class TestLibraryBatchEndToEnd : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }

    void batchOfThreeThenLibrary()
    {
        MediaServer media;
        QVERIFY2(media.start(), qPrintable(media.errorString()));
        // Two pages with titles of their own, so the two rips are two files.
        QHttpServer pages;
        pages.route(u"/watch/<arg>"_s, [&media](const QString& name) {
            return QHttpServerResponse("text/html", pageFor(u"Batch " + name, media));
        });
        const quint16 port = pages.listen(QHostAddress::LocalHost);
        QVERIFY(port);
        const QString base = u"http://127.0.0.1:" + QString::number(port);
        // The batch keeps only lines naming the video service; a query carries the name.
        const QStringList links{base + u"/watch/One?from=youtube.com",
                                media.missingUrl().toString() + u"?from=youtu.be",
                                base + u"/watch/Three?from=youtube.com"};

        EngineFixture fixture;
        QTRY_VERIFY_WITH_TIMEOUT(fixture.isReady(), 30000);
        BatchView batch(fixture.engine());
        batch.resize(880, 600);
        batch.show();
        batch.editor()->setPlainText(links.join(u'\n'));
        QTest::mouseClick(batch.addButton(), Qt::LeftButton);
        QCOMPARE(batch.runner().queue().size(), 3);
        QCOMPARE(batch.ripAllButton()->text(), u"Rip All (3 Tracks)"_s);

        QTest::mouseClick(batch.ripAllButton(), Qt::LeftButton);
        QCOMPARE(batch.state(), BatchView::State::processing);
        QTRY_COMPARE_WITH_TIMEOUT(batch.state(), BatchView::State::queued, 240000);

        const auto kind = [&](int row) { return batch.runner().queue().at(row).status.kind(); };
        QCOMPARE(kind(0), DownloadStatus::Kind::completed);
        QCOMPARE(kind(1), DownloadStatus::Kind::failed);
        QCOMPARE(kind(2), DownloadStatus::Kind::completed);
        const QString tooltip = batch.model()->index(1).data(Qt::ToolTipRole).toString();
        QVERIFY2(tooltip.contains(u"404"), qPrintable(tooltip));
        QCOMPARE(batch.countLabel()->text(), u"2 of 3 completed"_s);
        QVERIFY(QFileInfo::exists(batch.runner().queue().at(0).status.filePath()));

        // The library lists the two new tracks, newest first.
        fixture.history().waitForSaves();
        AudioPlayerService player;
        ArtworkCache artwork(fixture.rootPath() + u"/artwork");
        HistoryView library(fixture.history(), player, artwork);
        library.resize(880, 600);
        library.show();
        QVERIFY(QTest::qWaitForWindowExposed(&library));
        LibraryListModel* model = library.model();
        QCOMPARE(model->rowCount(), 2);
        QCOMPARE(model->trackAt(0).title, u"Batch Three"_s);
        QCOMPARE(model->trackAt(1).title, u"Batch One"_s);

        // Playing the second row from its button shows the pause symbol on that row only.
        QListView* list = library.listView();
        const QRect row = list->visualRect(model->index(1));
        const auto geometry = TrackDelegate::geometry(row, model->trackAt(1));
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, geometry.playButton.center());
        QTRY_VERIFY(player.isPlaying());
        QCOMPARE(player.currentTrack()->id, model->trackAt(1).id);
        QVERIFY(model->index(1).data(LibraryListModel::IsPlayingRole).toBool());
        QVERIFY(!model->index(0).data(LibraryListModel::IsPlayingRole).toBool());
        QCOMPARE(library.listView()->rowActionNames(1).first(), TrackListView::pauseAction());
        QCOMPARE(library.listView()->rowActionNames(0).first(), TrackListView::playAction());

        // Pressing it again pauses: the row shows play once more.
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, geometry.playButton.center());
        QVERIFY(!player.isPlaying());
        QVERIFY(!model->index(1).data(LibraryListModel::IsPlayingRole).toBool());
        player.stop();
    }
};

QTEST_MAIN(TestLibraryBatchEndToEnd)
#include "tst_library_batch_e2e.moc"
