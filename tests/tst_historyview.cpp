// SPDX-License-Identifier: GPL-3.0-or-later
#include "services/ArtworkCache.h"
#include "services/AudioPlayerService.h"
#include "services/HistoryStore.h"
#include "support/ScreenFixture.h"
#include "views/library/HistoryView.h"
#include "views/library/LibraryListModel.h"
#include "views/library/TrackDelegate.h"
#include "views/library/TrackListView.h"

#include <QAbstractItemModelTester>
#include <QAccessible>
#include <QClipboard>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>
#include <QVector3D>

using namespace Qt::StringLiterals;

namespace {
HistoryTrack makeTrack(const QString& title, const QString& channel, AudioFormat format,
                       QString filePath = {})
{
    // The store keeps one record per file.
    static int serial = 0;
    if (filePath.isEmpty())
        filePath = u"/music/song%1.mp3"_s.arg(++serial);
    HistoryTrack track;
    track.id = QUuid::createUuid();
    track.title = title;
    track.channel = channel;
    track.duration = u"3:32"_s;
    track.format = format;
    track.quality = AudioQuality::k256;
    track.filePath = filePath;
    track.fileSize = u"4.2 MB"_s;
    track.completedAt = HistoryTrack::now();
    track.youtubeUrl = u"https://youtu.be/abc"_s;
    return track;
}

QStringList shownTitles(const LibraryListModel& model)
{
    QStringList titles;
    for (int row = 0; row < model.rowCount(); ++row)
        titles << model.trackAt(row).title;
    return titles;
}

QAction* actionNamed(QMenu* menu, const QString& text)
{
    for (QAction* action : menu->actions())
        if (action->text() == text)
            return action;
    return nullptr;
}

QAbstractButton* buttonNamed(QMessageBox* box, const QString& text)
{
    for (QAbstractButton* button : box->buttons()) {
        if (button->text() == text)
            return button;
    }
    return nullptr;
}
} // namespace

class TestHistoryView : public QObject
{
    Q_OBJECT

    std::unique_ptr<ScreenFixture::Environment> m_env;
    std::unique_ptr<HistoryView> m_view;

    // The screen's parts, found as a screen reader finds them.
    TrackListView* list() const
    {
        return ScreenFixture::findNamed<TrackListView>(m_view.get(), u"Tracks"_s);
    }
    LibraryListModel* model() const { return m_view->findChild<LibraryListModel*>(); }
    QAbstractButton* button(const QString& name) const
    {
        return ScreenFixture::findNamed<QAbstractButton>(m_view.get(), name);
    }
    QMessageBox* question() const { return ScreenFixture::openQuestion(m_view.get()); }

    void addLibrary()
    {
        // Added oldest first; the store keeps the newest on top.
        m_env->history().addTrack(makeTrack(u"Only In Path"_s, u"Someone"_s, AudioFormat::wav,
                                            u"/music/beat/only.wav"_s));
        m_env->history().addTrack(makeTrack(u"Quiet Piano"_s, u"Beatmaker"_s, AudioFormat::flac));
        m_env->history().addTrack(makeTrack(u"Upbeat Morning"_s, u"Radio"_s, AudioFormat::m4a));
        // A real file, so the player has something to play.
        const QString silence = m_env->path() + u"/silence.wav"_s;
        QVERIFY(ScreenFixture::writeSilentWav(silence, 1));
        m_env->history().addTrack(
            makeTrack(u"LOFI BEATS"_s, u"Chill"_s, AudioFormat::mp3, silence));
    }

private slots:
    void init()
    {
        m_env = std::make_unique<ScreenFixture::Environment>();
        m_view =
            std::make_unique<HistoryView>(m_env->history(), m_env->player(),
                                          m_env->services().artwork, m_env->services().details);
        m_view->resize(880, 600);
    }

    void cleanup()
    {
        m_view.reset();
        m_env->history().waitForSaves();
        m_env.reset();
    }

    void filterAndSearch_data()
    {
        QTest::addColumn<QString>("search");
        QTest::addColumn<QString>("filter");
        QTest::addColumn<QStringList>("titles");
        const QStringList all{u"LOFI BEATS"_s, u"Upbeat Morning"_s, u"Quiet Piano"_s,
                              u"Only In Path"_s};
        // Lower case finds capitals, a word inside a longer one and a channel; never a path.
        QTest::newRow("beat") << u"beat"_s << u"All"_s << QStringList{all[0], all[1], all[2]};
        QTest::newRow("beat FLAC") << u"Beat"_s << u"FLAC"_s << QStringList{all[2]};
        QTest::newRow("path only") << u"only.wav"_s << u"All"_s << QStringList();
    }
    void filterAndSearch()
    {
        QFETCH(QString, search);
        QFETCH(QString, filter);
        QFETCH(QStringList, titles);
        addLibrary();
        QAbstractItemModelTester tester(model());
        m_view->setSelectedFilter(filter);
        // Typed one key at a time, as the narrowing path sees it.
        for (qsizetype length = 1; length <= search.size(); ++length)
            m_view->setSearchText(search.left(length));
        QCOMPARE(shownTitles(*model()), titles);
        QCOMPARE(m_view->content(),
                 titles.isEmpty() ? HistoryView::Content::noMatch : HistoryView::Content::list);
        // Deleting back to a shorter text widens the list again.
        m_view->setSearchText(QString());
        m_view->setSelectedFilter(u"All"_s);
        QCOMPARE(model()->rowCount(), 4);
    }

    // Records added and removed while the user works the list move rows, not the list: the
    // current row and the selection stay on their record, and nothing is reset.
    void listKeepsItsPlace()
    {
        addLibrary();
        m_env->history().waitForLoad();
        QAbstractItemModelTester tester(model());
        QListView* list = this->list();
        const auto rowOf = [&](const QString& title) {
            return int(shownTitles(*model()).indexOf(title));
        };
        list->setCurrentIndex(model()->index(rowOf(u"Quiet Piano"_s)));
        QSignalSpy resets(model(), &QAbstractItemModel::modelReset);
        QSignalSpy inserted(model(), &QAbstractItemModel::rowsInserted);

        m_env->history().addTrack(makeTrack(u"Fresh Rip"_s, u"Radio"_s, AudioFormat::mp3));
        const HistoryTrack top = m_env->history().tracks().value(1);
        m_env->history().removeTrack(top);
        // A record the search does not show changes no row.
        m_view->setSearchText(u"i"_s);
        list->setCurrentIndex(model()->index(rowOf(u"Quiet Piano"_s)));
        resets.clear();
        const int shown = model()->rowCount();
        m_env->history().addTrack(makeTrack(u"Zebra"_s, u"Zoo"_s, AudioFormat::mp3));
        QCOMPARE(model()->rowCount(), shown);
        m_env->history().addTrack(makeTrack(u"Piano Again"_s, u"Radio"_s, AudioFormat::mp3));
        QCOMPARE(model()->rowCount(), shown + 1);

        QCOMPARE(resets.count(), 0);
        QCOMPARE(inserted.count(), 2);
        QCOMPARE(list->currentIndex().data().toString(), u"Quiet Piano"_s);
        QCOMPARE(list->selectionModel()->selectedIndexes().value(0).data().toString(),
                 u"Quiet Piano"_s);
        QCOMPARE(shownTitles(*model()).first(), u"Piano Again"_s);
    }

    // A row draws its record's image, fetched once and kept scaled down in the cache folder,
    // and the placeholder when the image cannot be had. The kept copy serves later without
    // its source, and the folder is held under its cap.
    void artworkFromTheCache()
    {
        const QColor green(30, 160, 90);
        QImage source(640, 360, QImage::Format_RGB32);
        source.fill(green);
        const QString sourceFile = m_env->path() + u"/art.jpg"_s;
        QVERIFY(source.save(sourceFile, "JPG", 95));
        const QString address = QUrl::fromLocalFile(sourceFile).toString();
        HistoryTrack withArt = makeTrack(u"With Art"_s, u"C"_s, AudioFormat::mp3);
        withArt.thumbnailUrl = address;
        HistoryTrack gone = makeTrack(u"Gone"_s, u"C"_s, AudioFormat::mp3);
        gone.thumbnailUrl = QUrl::fromLocalFile(m_env->path() + u"/none.jpg"_s).toString();
        m_env->history().addTrack(gone);
        m_env->history().addTrack(withArt);
        m_view->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_view.get()));

        const QString folder = m_env->path() + u"/artwork"_s;
        const QString kept = ArtworkCache::fileFor(folder, address);
        QTRY_VERIFY(QFile::exists(kept));
        QCOMPARE(QImage(kept).size(), QSize(256, 144));
        auto pixelAt = [&](int row) {
            const QModelIndex index = model()->index(row, 0);
            const QRect art =
                TrackDelegate::geometry(list()->visualRect(index), model()->trackAt(row)).artwork;
            const QImage shot = list()->viewport()->grab().toImage();
            return shot.pixelColor(art.topLeft() + QPoint(8, 8));
        };
        auto near = [](QColor a, QColor b) {
            return QVector3D(a.red() - b.red(), a.green() - b.green(), a.blue() - b.blue())
                       .length() < 20;
        };
        QTRY_VERIFY(near(pixelAt(0), green));
        QTRY_VERIFY(m_env->services().artwork.hasNoArtwork(gone.thumbnailUrl));
        QVERIFY(!near(pixelAt(1), green));

        QVERIFY(QFile::remove(sourceFile));
        ArtworkCache offline(folder);
        QSignalSpy ready(&offline, &ArtworkCache::artworkReady);
        QVERIFY(offline.artwork(address, 48).isNull());
        QVERIFY(ready.wait());
        QVERIFY(near(offline.artwork(address, 48).toImage().pixelColor(4, 4), green));

        ArtworkCache capped(folder, 1);
        QTRY_VERIFY(!QFile::exists(kept));
    }

    void emptyLibraryIgnoresSearch()
    {
        m_view->show();
        m_view->setSearchText(u"anything"_s);
        QCOMPARE(m_view->content(), HistoryView::Content::empty);
        QVERIFY(!button(u"Clear All"_s));
        m_env->history().addTrack(makeTrack(u"New"_s, u"C"_s, AudioFormat::mp3));
        QCOMPARE(m_view->content(), HistoryView::Content::noMatch);
        QTest::mouseClick(button(u"Clear search"_s), Qt::LeftButton);
        QCOMPARE(ScreenFixture::findNamed<QLineEdit>(m_view.get(), u"Search tracks"_s)->text(),
                 QString());
        QCOMPARE(m_view->content(), HistoryView::Content::list);
    }

    // The row's trash button asks first, also when a screen reader presses it; the row reads
    // as its title with channel, duration and format.
    void trashAsksFirst()
    {
        addLibrary();
        m_view->show();
        QAccessibleInterface* row = QAccessible::queryAccessibleInterface(list())->child(1);
        QCOMPARE(row->text(QAccessible::Name), u"Upbeat Morning"_s);
        QCOMPARE(row->text(QAccessible::Description), u"Radio, 3:32, M4A, 256 kbps, 4.2 MB"_s);
        QCOMPARE(row->actionInterface()->actionNames(),
                 (QStringList{u"Play"_s, u"Show in Folder"_s, u"Remove from Library"_s}));
        row->actionInterface()->doAction(u"Remove from Library"_s);
        QMessageBox* box = question();
        QVERIFY(box);
        QCOMPARE(box->informativeText(), u"Remove \"Upbeat Morning\" from your library history?"_s);
        buttonNamed(box, u"Cancel"_s)->click();
        QCOMPARE(m_env->history().tracks().size(), 4);

        m_view->requestRemoval(model()->trackAt(1));
        buttonNamed(question(), u"Remove"_s)->click();
        QCOMPARE(shownTitles(*model()),
                 (QStringList{u"LOFI BEATS"_s, u"Quiet Piano"_s, u"Only In Path"_s}));

        // A record that leaves the library while asked about is no longer pending.
        m_view->requestRemoval(model()->trackAt(0));
        m_env->history().removeTrack(model()->trackAt(0));
        QCOMPARE(question()->informativeText(), u"Remove track from history?"_s);
        buttonNamed(question(), u"Remove"_s)->click();
        QCOMPARE(m_env->history().tracks().size(), 2);
    }

    void clearAllAsksFirst()
    {
        addLibrary();
        m_view->show();
        QTest::mouseClick(button(u"Clear All"_s), Qt::LeftButton);
        question()->reject();
        QCOMPARE(m_env->history().tracks().size(), 4);
        m_view->requestClearAll();
        buttonNamed(question(), u"Clear All"_s)->click();
        QVERIFY(m_env->history().tracks().isEmpty());
        QCOMPARE(m_view->content(), HistoryView::Content::empty);
        QVERIFY(!button(u"Clear All"_s));
    }

    void contextMenu()
    {
        addLibrary();
        std::unique_ptr<QMenu> menu(m_view->contextMenuFor(0));

        // Copying replaces whatever the clipboard held, rich text included.
        auto* rich = new QMimeData;
        rich->setHtml(u"<b>old</b>"_s);
        rich->setText(u"old"_s);
        QGuiApplication::clipboard()->setMimeData(rich);
        actionNamed(menu.get(), u"Copy File Path"_s)->trigger();
        const QMimeData* now = QGuiApplication::clipboard()->mimeData();
        QCOMPARE(now->text(), model()->trackAt(0).filePath);
        QVERIFY(!now->hasHtml());

        // Removing from the menu does not ask.
        actionNamed(menu.get(), u"Remove from Library"_s)->trigger();
        QVERIFY(!question());
        QCOMPARE(model()->rowCount(), 3);
    }

    // Return on a row plays it; taking it out of the library leaves the player alone.
    void playingStateAndRemovalKeepPlayback()
    {
        addLibrary();
        const HistoryTrack first = m_env->history().tracks().first();
        list()->setCurrentIndex(model()->index(0));
        QTest::keyClick(list(), Qt::Key_Return);
        QVERIFY(m_env->player().isPlaying());
        QVERIFY(model()->index(0).data(LibraryListModel::IsPlayingRole).toBool());
        QVERIFY(!model()->index(1).data(LibraryListModel::IsPlayingRole).toBool());
        QCOMPARE(list()->rowActionNames(0).first(), TrackListView::pauseAction());
        m_env->history().clearAll();
        QVERIFY(m_env->player().isPlaying());
        QCOMPARE(m_env->player().currentTrack()->id, first.id);
        m_env->player().stop();
    }
};

QTEST_MAIN(TestHistoryView)
#include "tst_historyview.moc"
