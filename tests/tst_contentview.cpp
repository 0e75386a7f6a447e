#include "services/AudioPlayerService.h"
#include "services/DependencyManager.h"
#include "services/DownloadEngine.h"
#include "services/HistoryStore.h"
#include "support/TestSupport.h"
#include "views/ContentView.h"
#include "views/DesktopTexts.h"
#include "views/MainWindow.h"
#include "views/MiniPlayerView.h"
#include "views/ScreenFactory.h"
#include "views/Sidebar.h"
#include "views/components/Theme.h"

#include <QAccessible>
#include <QAccessibleActionInterface>
#include <QApplication>
#include <QImage>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <QSettings>
#include <QSlider>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>
#include <QVBoxLayout>
#include <QtEndian>
#include <cmath>
#include <limits>
#include <memory>

namespace {

bool stripShown(const ContentView& view)
{
    return view.miniPlayer() && view.miniPlayer()->isVisible();
}

// One second of 8 kHz mono 16-bit silence, a file any audio backend can open.
QByteArray silentWav()
{
    const quint32 rate = 8000;
    const quint32 dataBytes = rate * 2;
    QByteArray wav;
    auto put32 = [&wav](quint32 v) {
        const quint32 le = qToLittleEndian(v);
        wav.append(reinterpret_cast<const char*>(&le), 4);
    };
    auto put16 = [&wav](quint16 v) {
        const quint16 le = qToLittleEndian(v);
        wav.append(reinterpret_cast<const char*>(&le), 2);
    };
    wav.append("RIFF");
    put32(36 + dataBytes);
    wav.append("WAVEfmt ");
    put32(16);
    put16(1);
    put16(1);
    put32(rate);
    put32(rate * 2);
    put16(2);
    put16(16);
    wav.append("data");
    put32(dataBytes);
    wav.append(QByteArray(static_cast<int>(dataBytes), '\0'));
    return wav;
}

// Gives the converter destination a text field, to check that a typed space reaches it.
class TextFieldFactory : public ScreenFactory
{
public:
    using ScreenFactory::ScreenFactory;
    QWidget* converter(QWidget* parent) const override
    {
        auto* screen = new QWidget(parent);
        auto* layout = new QVBoxLayout(screen);
        auto* field = new QLineEdit(screen);
        field->setObjectName(QStringLiteral("field"));
        layout->addWidget(field);
        return screen;
    }
};

} // namespace

class TestContentView : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_dir;
    std::unique_ptr<HistoryStore> m_history;
    std::unique_ptr<DependencyManager> m_dependencies;
    std::unique_ptr<DownloadEngine> m_engine;
    std::unique_ptr<AudioPlayerService> m_player;
    std::unique_ptr<Services> m_services;

    HistoryTrack track(const QString& title, const QString& thumbnail = {})
    {
        HistoryTrack t;
        t.id = QUuid::createUuid();
        t.title = title;
        t.channel = QStringLiteral("Channel");
        t.duration = QStringLiteral("0:01");
        t.format = AudioFormat::wav;
        t.quality = AudioQuality::best;
        t.filePath = m_dir.filePath(title + QStringLiteral(".wav"));
        t.thumbnailUrl = thumbnail;
        t.completedAt = HistoryTrack::now();
        TestSupport::writeFile(t.filePath, silentWav());
        return t;
    }

private slots:
    void initTestCase()
    {
        QStandardPaths::setTestModeEnabled(true);
        QApplication::setPalette(Theme::palette(Theme::Scheme::light));
    }

    void init()
    {
        QVERIFY(m_dir.isValid());
        m_history = std::make_unique<HistoryStore>(m_dir.filePath(QStringLiteral("library")));
        DependencyManager::Options options;
        options.installFolder = m_dir.filePath(QStringLiteral("bin"));
        options.systemFolders = {};
        options.environment = QProcessEnvironment();
        options.checkOnStart = false;
        m_dependencies = std::make_unique<DependencyManager>(options);
        m_engine = std::make_unique<DownloadEngine>(
            *m_dependencies, *m_history,
            std::make_unique<QSettings>(m_dir.filePath(QStringLiteral("settings.ini")),
                                        QSettings::IniFormat));
        m_player = std::make_unique<AudioPlayerService>();
        m_services =
            std::make_unique<Services>(Services{*m_engine, *m_dependencies, *m_history, *m_player});
    }

    void cleanup()
    {
        m_player->stop();
        m_history->clearAll();
        m_history->waitForSaves();
        m_services.reset();
        m_player.reset();
        m_engine.reset();
        m_dependencies.reset();
        m_history.reset();
    }

    void navigationTable()
    {
        QStringList titles, icons;
        for (NavigationItem item : Navigation::allCases()) {
            titles << Navigation::rawValue(item);
            icons << Navigation::iconName(item);
            QCOMPARE(Navigation::fromRawValue(Navigation::rawValue(item)), item);
        }
        QCOMPARE(titles, QStringList({QStringLiteral("Convert"), QStringLiteral("Batch"),
                                      QStringLiteral("Library"), QStringLiteral("Settings")}));
        QCOMPARE(icons,
                 QStringList({QStringLiteral("waveform.badge.plus"),
                              QStringLiteral("square.stack.3d.down.right"),
                              QStringLiteral("music.note.list"), QStringLiteral("gearshape")}));
        QVERIFY(!Navigation::fromRawValue(QStringLiteral("History")));
    }

    void windowSizes()
    {
        ScreenFactory factory(*m_services);
        MainWindow window(*m_services, factory);
        QCOMPARE(window.size(), QSize(880, 660));
        QCOMPARE(window.contentView()->minimumSize(), QSize(820, 600));
        QCOMPARE(window.contentView()->selectedTab(), NavigationItem::convert);
        QVERIFY(QApplication::quitOnLastWindowClosed());
        // Exactly two menus, neither offering a second window.
        QStringList actions;
        for (QAction* menu : window.menuBar()->actions())
            for (QAction* action : menu->menu()->actions())
                actions << action->text();
        QVERIFY(!actions.join(u'|').contains(u"New"));
        QCOMPARE(window.playPauseAction()->shortcut(), QKeySequence(Qt::Key_Space));
        QCOMPARE(window.stopAction()->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_Period));
    }

    // Every switch, by mouse or by a screen reader's press, builds the destination anew.
    void sidebarSwitching()
    {
        ScreenFactory factory(*m_services);
        ContentView view(*m_services, factory);
        view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&view));
        QPointer<QWidget> first = view.currentScreen();
        QCOMPARE(first->property("navigationItem").toString(), QStringLiteral("Convert"));

        QTest::mouseClick(view.sidebar()->row(NavigationItem::history), Qt::LeftButton);
        QCOMPARE(view.selectedTab(), NavigationItem::history);
        QCOMPARE(view.currentScreen()->property("navigationItem").toString(),
                 QStringLiteral("Library"));
        QTRY_VERIFY(first.isNull());

        QAccessibleInterface* row =
            QAccessible::queryAccessibleInterface(view.sidebar()->row(NavigationItem::convert));
        QCOMPARE(row->text(QAccessible::Name), QStringLiteral("Convert"));
        row->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QTRY_COMPARE(view.selectedTab(), NavigationItem::convert);
        QCOMPARE(view.currentScreen()->property("navigationItem").toString(),
                 QStringLiteral("Convert"));
        QVERIFY(view.sidebar()->row(NavigationItem::convert)->isChecked());
        QVERIFY(!view.sidebar()->row(NavigationItem::history)->isChecked());
    }

    void libraryBadgeFollowsStore()
    {
        ScreenFactory factory(*m_services);
        ContentView view(*m_services, factory);
        SidebarRow* library = view.sidebar()->row(NavigationItem::history);
        QCOMPARE(library->badgeCount(), 0);
        m_history->addTrack(track(QStringLiteral("one")));
        QCOMPARE(library->badgeCount(), 1);
        m_history->addTrack(track(QStringLiteral("two")));
        QCOMPARE(library->badgeCount(), 2);
        QCOMPARE(library->accessibleDescription(), QStringLiteral("2 tracks"));
        m_history->clearAll();
        QCOMPARE(library->badgeCount(), 0);
        // A store that already holds tracks shows its count at once.
        m_history->addTrack(track(QStringLiteral("three")));
        ContentView second(*m_services, factory);
        QCOMPARE(second.sidebar()->row(NavigationItem::history)->badgeCount(), 1);
    }

    // Space plays or pauses, except that a space typed into a text field stays there;
    // Ctrl+. stops and hides the strip.
    void playbackShortcuts()
    {
        TextFieldFactory factory(*m_services);
        MainWindow window(*m_services, factory);
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        const ContentView& view = *window.contentView();

        // Nothing loaded: both commands leave the player stopped and the strip hidden.
        window.contentView()->setFocus();
        QTest::keyClick(&window, Qt::Key_Space);
        QTest::keyClick(&window, Qt::Key_Period, Qt::ControlModifier);
        QVERIFY(!m_player->currentTrack());
        QVERIFY(!stripShown(view));

        m_player->play(track(QStringLiteral("song")));
        QVERIFY(m_player->currentTrack());
        QVERIFY(m_player->isPlaying());
        QVERIFY(stripShown(view));

        auto* field = window.findChild<QLineEdit*>(QStringLiteral("field"));
        QVERIFY(field);
        field->setFocus();
        QTest::keyClicks(field, QStringLiteral("a b"));
        QCOMPARE(field->text(), QStringLiteral("a b"));
        QVERIFY(m_player->isPlaying());

        // A focused button takes Space as its own press, as keyboard users expect.
        SidebarRow* batch = window.contentView()->sidebar()->row(NavigationItem::batch);
        batch->setFocus();
        QTest::keyClick(batch, Qt::Key_Space);
        QCOMPARE(window.contentView()->selectedTab(), NavigationItem::batch);
        QVERIFY(m_player->isPlaying());

        window.contentView()->setFocus();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
        QVERIFY(!m_player->isPlaying());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
        QVERIFY(m_player->isPlaying());

        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Period, Qt::ControlModifier);
        QVERIFY(!m_player->currentTrack());
        QVERIFY(!stripShown(view));
    }

    void miniPlayerStrip()
    {
        ScreenFactory factory(*m_services);
        ContentView view(*m_services, factory);
        view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&view));
        QVERIFY(!stripShown(view));

        m_player->play(track(QStringLiteral("Night Drive")));
        QVERIFY(stripShown(view));
        MiniPlayerView* strip = view.miniPlayer();
        QVERIFY(!strip->showsArtworkImage());
        QCOMPARE(strip->shownPlaySymbol(), QStringLiteral("pause.fill"));

        // Every control is named for a screen reader.
        QStringList names;
        for (QToolButton* button : strip->findChildren<QToolButton*>())
            names << button->accessibleName();
        for (QSlider* slider : strip->findChildren<QSlider*>())
            names << slider->accessibleName();
        names.sort();
        QCOMPARE(names,
                 QStringList({QStringLiteral("Close Player"), QStringLiteral("Pause"),
                              QStringLiteral("Playback Position"), DesktopTexts::kShowInFolder,
                              QStringLiteral("Stop"), QStringLiteral("Volume")}));

        auto* seek = strip->findChild<QSlider*>();
        QVERIFY(seek->maximum() >= 1000);

        const QList<QPair<float, QString>> volumes = {
            {0.0f, QStringLiteral("speaker.slash.fill")},
            {0.5f, QStringLiteral("speaker.wave.1.fill")},
            {0.51f, QStringLiteral("speaker.wave.3.fill")},
            {1.0f, QStringLiteral("speaker.wave.3.fill")},
            {0.01f, QStringLiteral("speaker.wave.1.fill")},
        };
        for (const auto& [volume, symbol] : volumes) {
            m_player->setVolume(volume);
            QCOMPARE(strip->shownVolumeSymbol(), symbol);
            QCOMPARE(MiniPlayerView::volumeSymbol(volume), symbol);
        }

        // The strip's own slider drives the service's volume.
        QSlider* volumeSlider = nullptr;
        for (QSlider* slider : strip->findChildren<QSlider*>())
            if (slider->accessibleName() == u"Volume")
                volumeSlider = slider;
        volumeSlider->setValue(25);
        QCOMPARE(m_player->volume(), 0.25f);
        QCOMPARE(strip->shownVolumeSymbol(), QStringLiteral("speaker.wave.1.fill"));

        QToolButton* close = nullptr;
        for (QToolButton* button : strip->findChildren<QToolButton*>())
            if (button->toolTip() == u"Close Player")
                close = button;
        // The strip is laid out under the screen before it can be clicked.
        QTRY_VERIFY(close->mapTo(&view, QPoint(0, 0)).y() > view.height() / 2);
        QTest::mouseClick(close, Qt::LeftButton);
        QVERIFY(!m_player->currentTrack());
        QVERIFY(!stripShown(view));

        // Loading another track brings the same strip back, with its artwork once it loads.
        QImage cover(64, 48, QImage::Format_RGB32);
        cover.fill(Qt::darkCyan);
        const QString coverPath = m_dir.filePath(QStringLiteral("cover.png"));
        QVERIFY(cover.save(coverPath));
        m_player->play(track(QStringLiteral("Second"), QUrl::fromLocalFile(coverPath).toString()));
        QCOMPARE(view.miniPlayer(), strip);
        QVERIFY(stripShown(view));
        QTRY_VERIFY(strip->showsArtworkImage());

        // A thumbnail text that is no address leaves the placeholder.
        m_player->play(track(QStringLiteral("Third"), QStringLiteral("not a link")));
        QVERIFY(!strip->showsArtworkImage());
        QTest::qWait(100);
        QVERIFY(!strip->showsArtworkImage());
    }

    void formatTime_data()
    {
        QTest::addColumn<double>("seconds");
        QTest::addColumn<QString>("text");
        QTest::newRow("zero") << 0.0 << QStringLiteral("0:00");
        QTest::newRow("truncated") << 65.9 << QStringLiteral("1:05");
        QTest::newRow("no hours field") << 3725.0 << QStringLiteral("62:05");
        QTest::newRow("just under a minute") << 59.999 << QStringLiteral("0:59");
        QTest::newRow("not a number")
            << std::numeric_limits<double>::quiet_NaN() << QStringLiteral("0:00");
        QTest::newRow("infinite") << std::numeric_limits<double>::infinity()
                                  << QStringLiteral("0:00");
        QTest::newRow("negative") << -4.0 << QStringLiteral("0:00");
    }
    void formatTime()
    {
        QFETCH(double, seconds);
        QFETCH(QString, text);
        QCOMPARE(ContentView::formatTime(seconds), text);
    }
};

QTEST_MAIN(TestContentView)
#include "tst_contentview.moc"
