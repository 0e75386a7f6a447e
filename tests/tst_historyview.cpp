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
#include <QBuffer>
#include <QClipboard>
#include <QHttpServer>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace {
HistoryTrack makeTrack(const QString& title, const QString& channel, AudioFormat format,
                       QString filePath = {})
{
    // The store keeps one record per file.
    static int serial = 0;
    if (filePath.isEmpty())
        filePath = u"/music/song%1.mp3"_s.arg(++serial);
    return {QUuid::createUuid(),      title,    channel,     u"3:32"_s, format,
            AudioQuality::k256,       filePath, u"4.2 MB"_s, QString(), HistoryTrack::now(),
            u"https://youtu.be/abc"_s};
}

QStringList shownTitles(const LibraryListModel& model)
{
    QStringList titles;
    for (int row = 0; row < model.rowCount(); ++row)
        titles << model.trackAt(row).title;
    return titles;
}

QStringList menuTexts(QMenu* menu)
{
    QStringList items;
    for (QAction* action : menu->actions())
        items << (action->isSeparator() ? u"-"_s : action->text());
    return items;
}

QAction* actionNamed(QMenu* menu, const QString& text)
{
    const QList<QAction*> actions = menu->actions();
    const auto it = std::find_if(actions.begin(), actions.end(),
                                 [&](QAction* action) { return action->text() == text; });
    return it == actions.end() ? nullptr : *it;
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
    std::unique_ptr<ArtworkCache> m_artwork;
    std::unique_ptr<HistoryView> m_view;

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
        m_artwork = std::make_unique<ArtworkCache>(m_env->path() + u"/art"_s);
        m_view = std::make_unique<HistoryView>(m_env->history(), m_env->player(), *m_artwork);
        m_view->resize(880, 600);
    }

    void cleanup()
    {
        m_view.reset();
        m_artwork.reset();
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
        QAbstractItemModelTester tester(m_view->model());
        m_view->setSelectedFilter(filter);
        // Typed one key at a time, as the narrowing path sees it.
        for (qsizetype length = 1; length <= search.size(); ++length)
            m_view->setSearchText(search.left(length));
        QCOMPARE(shownTitles(*m_view->model()), titles);
        QCOMPARE(m_view->content(),
                 titles.isEmpty() ? HistoryView::Content::noMatch : HistoryView::Content::list);
        // Deleting back to a shorter text widens the list again.
        m_view->setSearchText(QString());
        m_view->setSelectedFilter(u"All"_s);
        QCOMPARE(m_view->model()->rowCount(), 4);
    }

    void emptyLibraryIgnoresSearch()
    {
        m_view->show();
        m_view->setSearchText(u"anything"_s);
        QCOMPARE(m_view->content(), HistoryView::Content::empty);
        QVERIFY(!m_view->clearAllButton()->isVisible());
        QVERIFY(m_view->clearSearchButton()->isVisible());
        m_env->history().addTrack(makeTrack(u"New"_s, u"C"_s, AudioFormat::mp3));
        QVERIFY(m_view->clearAllButton()->isVisible());
        QCOMPARE(m_view->content(), HistoryView::Content::noMatch);
        QTest::mouseClick(m_view->clearSearchButton(), Qt::LeftButton);
        QCOMPARE(m_view->searchField()->text(), QString());
        QCOMPARE(m_view->content(), HistoryView::Content::list);
    }

    void formatMenuAndReset()
    {
        addLibrary();
        m_view->show();
        QMenu* menu = m_view->formatButton()->menu();
        QCOMPARE(menuTexts(menu), (QStringList{u"All Formats"_s, u"-"_s, u"MP3"_s, u"M4A / AAC"_s,
                                               u"FLAC (Lossless)"_s, u"WAV"_s, u"OPUS"_s}));
        QCOMPARE(m_view->formatButton()->text(), u"All Formats"_s);
        actionNamed(menu, u"M4A / AAC"_s)->trigger();
        QCOMPARE(m_view->formatButton()->text(), u"M4A"_s);
        QCOMPARE(shownTitles(*m_view->model()), QStringList{u"Upbeat Morning"_s});

        actionNamed(menu, u"FLAC (Lossless)"_s)->trigger();
        QTest::keyClicks(m_view->searchField(), u"zzz"_s);
        QCOMPARE(m_view->content(), HistoryView::Content::noMatch);
        QVERIFY(m_view->resetFiltersButton()->isVisible());
        QTest::mouseClick(m_view->resetFiltersButton(), Qt::LeftButton);
        QCOMPARE(m_view->content(), HistoryView::Content::list);
        QCOMPARE(m_view->model()->rowCount(), 4);
        QCOMPARE(m_view->formatButton()->text(), u"All Formats"_s);
        QCOMPARE(m_view->searchField()->text(), QString());
    }

    // Lossless formats carry no quality badge.
    void badgesPerFormat()
    {
        for (AudioFormat format : AudioFormat::allCases()) {
            const auto g = TrackDelegate::geometry(QRect(0, 0, 800, TrackDelegate::kRowHeight),
                                                   makeTrack(u"T"_s, u"C"_s, format));
            QCOMPARE(g.qualityBadge.isNull(), !format.supportsBitrate());
            QVERIFY(g.formatBadge.isValid());
        }
    }

    void trashAsksFirst()
    {
        addLibrary();
        m_view->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_view.get()));
        QListView* list = m_view->listView();
        const QRect rowRect = list->visualRect(m_view->model()->index(1, 0));
        const auto g = TrackDelegate::geometry(rowRect, m_view->model()->trackAt(1));
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, g.trashButton.center());
        QMessageBox* box = m_view->deleteConfirmation();
        QVERIFY(box);
        QCOMPARE(box->windowTitle(), u"Delete Track from Library?"_s);
        QCOMPARE(box->informativeText(), u"Remove \"Upbeat Morning\" from your library history?"_s);
        QCOMPARE(m_view->trackToDelete()->title, u"Upbeat Morning"_s);
        QAbstractButton* cancel = buttonNamed(box, u"Cancel"_s);
        QVERIFY(cancel && buttonNamed(box, u"Remove"_s));
        QCOMPARE(box->buttonRole(buttonNamed(box, u"Remove"_s)), QMessageBox::DestructiveRole);
        cancel->click();
        QVERIFY(!m_view->trackToDelete());
        QCOMPARE(m_env->history().tracks().size(), 4);

        m_view->requestRemoval(m_view->model()->trackAt(1));
        buttonNamed(m_view->deleteConfirmation(), u"Remove"_s)->click();
        QVERIFY(!m_view->trackToDelete());
        QCOMPARE(shownTitles(*m_view->model()),
                 (QStringList{u"LOFI BEATS"_s, u"Quiet Piano"_s, u"Only In Path"_s}));

        // A record that leaves the library while asked about is no longer pending.
        m_view->requestRemoval(m_view->model()->trackAt(0));
        m_env->history().removeTrack(m_view->model()->trackAt(0));
        QVERIFY(!m_view->trackToDelete());
        QCOMPARE(m_view->deleteConfirmation()->informativeText(), u"Remove track from history?"_s);
        buttonNamed(m_view->deleteConfirmation(), u"Remove"_s)->click();
        QCOMPARE(m_env->history().tracks().size(), 2);
    }

    void clearAllAsksFirst()
    {
        addLibrary();
        m_view->show();
        QTest::mouseClick(m_view->clearAllButton(), Qt::LeftButton);
        QMessageBox* box = m_view->clearAllConfirmation();
        QVERIFY(box);
        QCOMPARE(box->windowTitle(), u"Clear Download History?"_s);
        QCOMPARE(box->informativeText(),
                 QStringLiteral("This will remove all tracks from your library list. Your "
                                "downloaded audio files will remain in your folders."));
        QVERIFY(buttonNamed(box, u"Cancel"_s));
        box->reject();
        QVERIFY(!m_view->showClearAllAlert());
        QCOMPARE(m_env->history().tracks().size(), 4);

        m_view->requestClearAll();
        buttonNamed(m_view->clearAllConfirmation(), u"Clear All"_s)->click();
        QVERIFY(m_env->history().tracks().isEmpty());
        QCOMPARE(m_view->content(), HistoryView::Content::empty);
        QVERIFY(!m_view->clearAllButton()->isVisible());
    }

    void contextMenu()
    {
        addLibrary();
        std::unique_ptr<QMenu> menu(m_view->contextMenuFor(0));
        QCOMPARE(menuTexts(menu.get()),
                 (QStringList{u"Play Track"_s, u"Show in Folder"_s, u"Open in Default Player"_s,
                              u"-"_s, u"Copy File Path"_s, u"Copy YouTube Link"_s, u"-"_s,
                              u"Remove from Library"_s}));

        // Copying replaces whatever the clipboard held, rich text included.
        auto* rich = new QMimeData;
        rich->setHtml(u"<b>old</b>"_s);
        rich->setText(u"old"_s);
        QGuiApplication::clipboard()->setMimeData(rich);
        actionNamed(menu.get(), u"Copy File Path"_s)->trigger();
        const QMimeData* now = QGuiApplication::clipboard()->mimeData();
        QCOMPARE(now->text(), m_view->model()->trackAt(0).filePath);
        QVERIFY(!now->hasHtml());
        actionNamed(menu.get(), u"Copy YouTube Link"_s)->trigger();
        QCOMPARE(QGuiApplication::clipboard()->text(), u"https://youtu.be/abc"_s);

        // Removing from the menu does not ask.
        actionNamed(menu.get(), u"Remove from Library"_s)->trigger();
        QVERIFY(!m_view->deleteConfirmation());
        QCOMPARE(m_view->model()->rowCount(), 3);
        QCOMPARE(m_view->model()->trackAt(0).title, u"Upbeat Morning"_s);
    }

    void playingStateAndRemovalKeepPlayback()
    {
        addLibrary();
        const HistoryTrack first = m_env->history().tracks().first();
        QVERIFY(!m_view->model()->index(0).data(LibraryListModel::IsPlayingRole).toBool());
        QSignalSpy changed(m_view->model(), &QAbstractItemModel::dataChanged);
        // Return on the current row presses its play button.
        m_view->listView()->setCurrentIndex(m_view->model()->index(0));
        QTest::keyClick(m_view->listView(), Qt::Key_Return);
        QVERIFY(m_env->player().isPlaying());
        QVERIFY(!changed.isEmpty());
        QVERIFY(m_view->model()->index(0).data(LibraryListModel::IsPlayingRole).toBool());
        QVERIFY(!m_view->model()->index(1).data(LibraryListModel::IsPlayingRole).toBool());
        QCOMPARE(m_view->listView()->rowActionNames(0).first(), TrackListView::pauseAction());

        // Taking the record out of the library, or clearing it, leaves the player alone.
        std::unique_ptr<QMenu>(m_view->contextMenuFor(0))->actions().constLast()->trigger();
        QCOMPARE(m_view->model()->rowCount(), 3);
        m_env->history().clearAll();
        QVERIFY(m_env->player().isPlaying());
        QCOMPARE(m_env->player().currentTrack()->id, first.id);
        m_env->player().stop();
    }

    void accessibleRows()
    {
        addLibrary();
        m_view->show();
        QAccessibleInterface* list = QAccessible::queryAccessibleInterface(m_view->listView());
        QVERIFY(list);
        QCOMPARE(list->childCount(), 4);
        QAccessibleInterface* row = list->child(2);
        QCOMPARE(row->text(QAccessible::Name), u"Quiet Piano"_s);
        QVERIFY(row->text(QAccessible::Description).startsWith(u"Beatmaker, 3:32, FLAC"));
        QAccessibleActionInterface* actions = row->actionInterface();
        QVERIFY(actions);
        QCOMPARE(actions->actionNames(),
                 (QStringList{u"Play"_s, u"Show in Folder"_s, u"Remove from Library"_s}));
        actions->doAction(u"Remove from Library"_s);
        QVERIFY(m_view->deleteConfirmation());
        QCOMPARE(m_view->trackToDelete()->title, u"Quiet Piano"_s);
        m_view->deleteConfirmation()->reject();

        const QList<QWidget*> controls{m_view->searchField(), m_view->formatButton(),
                                       m_view->clearAllButton(), m_view->clearSearchButton()};
        for (QWidget* control : controls) {
            QAccessibleInterface* face = QAccessible::queryAccessibleInterface(control);
            QVERIFY2(!face->text(QAccessible::Name).isEmpty(), control->metaObject()->className());
        }
    }

    void artwork()
    {
        QTemporaryDir cacheDir;
        ArtworkCache cache(cacheDir.path());
        QVERIFY(cache.hasNoArtwork(QString()));
        QVERIFY(cache.hasNoArtwork(u"not an address"_s));
        QVERIFY(cache.artwork(u"ftp://host/a.jpg"_s, 48).isNull());

        QImage image(64, 32, QImage::Format_RGB32);
        image.fill(Qt::red);
        QByteArray png;
        QBuffer buffer(&png);
        image.save(&buffer, "PNG");
        int fetches = 0;
        QHttpServer server;
        server.route(u"/art.png"_s, [&] {
            ++fetches;
            QHttpServerResponse response("image/png", png);
            response.setHeader("Cache-Control", "max-age=3600");
            return response;
        });
        server.route(u"/missing.png"_s,
                     [] { return QHttpServerResponse(QHttpServerResponse::StatusCode::NotFound); });
        const quint16 port = server.listen(QHostAddress::LocalHost);
        QVERIFY(port);
        const QString base = u"http://127.0.0.1:" + QString::number(port);

        QSignalSpy ready(&cache, &ArtworkCache::artworkReady);
        QVERIFY(cache.artwork(base + u"/art.png", 48).isNull());
        QVERIFY(cache.artwork(base + u"/missing.png", 48).isNull());
        QTRY_COMPARE(ready.size(), 2);
        const QPixmap loaded = cache.artwork(base + u"/art.png", 48);
        QCOMPARE(loaded.size(), QSize(48, 48));
        QVERIFY(cache.hasNoArtwork(base + u"/missing.png"));

        // A new cache over the same folder (a later visit, a later run) does not fetch again.
        ArtworkCache later(cacheDir.path());
        QSignalSpy laterReady(&later, &ArtworkCache::artworkReady);
        QVERIFY(later.artwork(base + u"/art.png", 48).isNull());
        QTRY_COMPARE(laterReady.size(), 1);
        QVERIFY(!later.artwork(base + u"/art.png", 48).isNull());
        QCOMPARE(fetches, 1);
    }
};

QTEST_MAIN(TestHistoryView)
#include "tst_historyview.moc"
