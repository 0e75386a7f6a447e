#include "models/FormatTime.h"
#include "services/AudioPlayerService.h"
#include "services/HistoryStore.h"
#include "support/ScreenFixture.h"
#include "views/components/DesktopTexts.h"
#include "views/components/Theme.h"
#include "views/shell/ContentView.h"
#include "views/shell/MainWindow.h"
#include "views/shell/MiniPlayerView.h"
#include "views/shell/ScreenFactory.h"
#include "views/shell/Sidebar.h"

#include <QAccessible>
#include <QAccessibleActionInterface>
#include <QApplication>
#include <QCheckBox>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <QSet>
#include <QSlider>
#include <QStandardPaths>
#include <QTest>
#include <QToolButton>
#include <QVBoxLayout>
#include <cmath>
#include <limits>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

bool stripShown(const ContentView& view)
{
    return view.miniPlayer() && view.miniPlayer()->isVisible();
}

// Gives the converter destination a text field and a check box, which keep a typed space.
class TextFieldFactory : public ScreenFactory
{
public:
    using ScreenFactory::ScreenFactory;
    QWidget* converter(QWidget* parent) const override
    {
        auto* screen = new QWidget(parent);
        auto* layout = new QVBoxLayout(screen);
        auto* field = new QLineEdit(screen);
        field->setObjectName(u"field"_s);
        layout->addWidget(field);
        auto* box = new QCheckBox(u"Box"_s, screen);
        box->setObjectName(u"box"_s);
        layout->addWidget(box);
        return screen;
    }
};

// What under root is still drawn in the light palette's text colours after a switch to dark:
// a label's text, or the opaque pixels of a label's symbol or a button's icon.
QStringList lightLeftovers(QWidget* root)
{
    const QPalette light = Theme::palette(Theme::Scheme::light);
    const QSet<QRgb> lightOnly{Theme::primaryText(light).rgb(), Theme::secondaryText(light).rgb()};
    const auto inked = [&](const QImage& image) {
        const QImage argb = image.convertToFormat(QImage::Format_ARGB32);
        for (int y = 0; y < argb.height(); ++y)
            for (int x = 0; x < argb.width(); ++x)
                if (qAlpha(argb.pixel(x, y)) == 255 && lightOnly.contains(argb.pixel(x, y)))
                    return true;
        return false;
    };
    QStringList found;
    for (QWidget* widget : root->findChildren<QWidget*>()) {
        if (!widget->isVisibleTo(root))
            continue;
        const QString name = QString::fromLatin1(widget->metaObject()->className()) + u' ' +
                             widget->accessibleName() + u' ';
        if (auto* label = qobject_cast<QLabel*>(widget)) {
            if (lightOnly.contains(label->palette().color(QPalette::WindowText).rgb()) ||
                inked(label->pixmap().toImage()))
                found << name + label->text();
        } else if (auto* button = qobject_cast<QAbstractButton*>(widget)) {
            if (inked(button->icon().pixmap(button->iconSize()).toImage()))
                found << name + button->text();
        }
    }
    return found;
}

} // namespace

class TestContentView : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<ScreenFixture::Environment> m_env;

    QString file(const QString& name) const { return m_env->path() + u'/' + name; }

    HistoryTrack track(const QString& title, const QString& thumbnail = {})
    {
        HistoryTrack t;
        t.id = QUuid::createUuid();
        t.title = title;
        t.channel = u"Channel"_s;
        t.duration = u"0:01"_s;
        t.format = AudioFormat::wav;
        t.quality = AudioQuality::best;
        t.filePath = file(title + u".wav"_s);
        t.thumbnailUrl = thumbnail;
        t.completedAt = HistoryTrack::now();
        ScreenFixture::writeSilentWav(t.filePath, 1);
        return t;
    }

private slots:
    void initTestCase()
    {
        QStandardPaths::setTestModeEnabled(true);
        QApplication::setPalette(Theme::palette(Theme::Scheme::light));
    }

    void init() { m_env = std::make_unique<ScreenFixture::Environment>(); }
    void cleanup()
    {
        QApplication::setPalette(Theme::palette(Theme::Scheme::light));
        m_env->player().stop();
        m_env->history().waitForSaves();
        m_env.reset();
    }

    void windowSizes()
    {
        ScreenFactory factory(m_env->services());
        MainWindow window(m_env->services(), factory);
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
        ScreenFactory factory(m_env->services());
        ContentView view(m_env->services(), factory);
        view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&view));
        QPointer<QWidget> first = view.currentScreen();
        QCOMPARE(first->property("navigationItem").toString(), u"Convert"_s);

        QTest::mouseClick(view.sidebar()->row(NavigationItem::history), Qt::LeftButton);
        QCOMPARE(view.selectedTab(), NavigationItem::history);
        QCOMPARE(view.currentScreen()->property("navigationItem").toString(), u"Library"_s);
        QTRY_VERIFY(first.isNull());

        QAccessibleInterface* row =
            QAccessible::queryAccessibleInterface(view.sidebar()->row(NavigationItem::convert));
        QCOMPARE(row->text(QAccessible::Name), u"Convert"_s);
        row->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QTRY_COMPARE(view.selectedTab(), NavigationItem::convert);
        QCOMPARE(view.currentScreen()->property("navigationItem").toString(), u"Convert"_s);
        QVERIFY(view.sidebar()->row(NavigationItem::convert)->isChecked());
        QVERIFY(!view.sidebar()->row(NavigationItem::history)->isChecked());
    }

    void libraryBadgeFollowsStore()
    {
        ScreenFactory factory(m_env->services());
        ContentView view(m_env->services(), factory);
        SidebarRow* library = view.sidebar()->row(NavigationItem::history);
        QCOMPARE(library->badgeCount(), 0);
        m_env->history().addTrack(track(u"one"_s));
        m_env->history().addTrack(track(u"two"_s));
        QCOMPARE(library->badgeCount(), 2);
        QCOMPARE(library->accessibleDescription(), u"2 tracks"_s);
        m_env->history().clearAll();
        QCOMPARE(library->badgeCount(), 0);
        // A store that already holds tracks shows its count at once.
        m_env->history().addTrack(track(u"three"_s));
        ContentView second(m_env->services(), factory);
        QCOMPARE(second.sidebar()->row(NavigationItem::history)->badgeCount(), 1);
    }

    // Space plays or pauses, except in a text field or a check box;
    // Ctrl+. stops and hides the strip.
    void playbackShortcuts()
    {
        TextFieldFactory factory(m_env->services());
        MainWindow window(m_env->services(), factory);
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        const ContentView& view = *window.contentView();

        // Nothing loaded: both commands leave the player stopped and the strip hidden.
        window.contentView()->setFocus();
        QTest::keyClick(&window, Qt::Key_Space);
        QTest::keyClick(&window, Qt::Key_Period, Qt::ControlModifier);
        QVERIFY(!m_env->player().currentTrack());
        QVERIFY(!stripShown(view));

        m_env->player().play(track(u"song"_s));
        QVERIFY(m_env->player().currentTrack());
        QVERIFY(m_env->player().isPlaying());
        QVERIFY(stripShown(view));

        auto* field = window.findChild<QLineEdit*>(u"field"_s);
        QVERIFY(field);
        field->setFocus();
        QTest::keyClicks(field, u"a b"_s);
        QCOMPARE(field->text(), u"a b"_s);
        QVERIFY(m_env->player().isPlaying());

        auto* box = window.findChild<QCheckBox*>(u"box"_s);
        box->setFocus();
        QTest::keyClick(box, Qt::Key_Space);
        QVERIFY(box->isChecked());
        QVERIFY(m_env->player().isPlaying());

        // A focused row or button leaves Space to Play / Pause (a click focuses it) and is
        // pressed with Return or Enter.
        SidebarRow* batch = window.contentView()->sidebar()->row(NavigationItem::batch);
        batch->setFocus();
        QTest::keyClick(batch, Qt::Key_Space);
        QCOMPARE(window.contentView()->selectedTab(), NavigationItem::convert);
        QVERIFY(!m_env->player().isPlaying());
        QTest::keyClick(batch, Qt::Key_Return);
        QTRY_COMPARE(window.contentView()->selectedTab(), NavigationItem::batch);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
        QVERIFY(m_env->player().isPlaying());
        auto* close = ScreenFixture::findNamed<QToolButton>(window.contentView()->miniPlayer(),
                                                            u"Close Player"_s);
        close->setFocus();
        QTest::keyClick(close, Qt::Key_Space);
        QVERIFY(m_env->player().currentTrack());
        QVERIFY(!m_env->player().isPlaying());
        QTest::keyClick(close, Qt::Key_Enter, Qt::KeypadModifier);
        QTRY_VERIFY(!m_env->player().currentTrack());
        m_env->player().play(track(u"song"_s));
        window.contentView()->setFocus();

        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Period, Qt::ControlModifier);
        QVERIFY(!m_env->player().currentTrack());
        QVERIFY(!stripShown(view));
    }

    void miniPlayerStrip()
    {
        ScreenFactory factory(m_env->services());
        ContentView view(m_env->services(), factory);
        view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&view));
        QVERIFY(!stripShown(view));

        m_env->player().play(track(u"Night Drive"_s));
        QVERIFY(stripShown(view));
        MiniPlayerView* strip = view.miniPlayer();
        QVERIFY(!strip->showsArtworkImage());
        QCOMPARE(strip->shownPlaySymbol(), u"pause.fill"_s);

        // Every control is named for a screen reader.
        QStringList names;
        for (QToolButton* button : strip->findChildren<QToolButton*>())
            names << button->accessibleName();
        for (QSlider* slider : strip->findChildren<QSlider*>())
            names << slider->accessibleName();
        names.sort();
        QCOMPARE(names, QStringList({u"Close Player"_s, u"Pause"_s, u"Playback Position"_s,
                                     DesktopTexts::kShowInFolder, u"Stop"_s, u"Volume"_s}));

        QVERIFY(strip->findChild<QSlider*>()->maximum() >= 1000);

        const QList<QPair<float, QString>> volumes = {
            {0.0f, u"speaker.slash.fill"_s},
            {0.5f, u"speaker.wave.1.fill"_s},
            {0.51f, u"speaker.wave.3.fill"_s},
        };
        for (const auto& [volume, symbol] : volumes) {
            m_env->player().setVolume(volume);
            QCOMPARE(strip->shownVolumeSymbol(), symbol);
        }

        // The strip's own slider drives the service's volume.
        auto* volumeSlider = ScreenFixture::findNamed<QSlider>(strip, u"Volume"_s);
        QVERIFY(volumeSlider);
        volumeSlider->setValue(25);
        QCOMPARE(m_env->player().volume(), 0.25f);
        QCOMPARE(strip->shownVolumeSymbol(), u"speaker.wave.1.fill"_s);

        auto* close = ScreenFixture::findNamed<QToolButton>(strip, u"Close Player"_s);
        QVERIFY(close);
        // The strip is laid out under the screen before it can be clicked.
        QTRY_VERIFY(close->mapTo(&view, QPoint(0, 0)).y() > view.height() / 2);
        QTest::mouseClick(close, Qt::LeftButton);
        QVERIFY(!m_env->player().currentTrack());
        QVERIFY(!stripShown(view));

        // Loading another track brings the same strip back, with its artwork once it loads.
        QImage cover(64, 48, QImage::Format_RGB32);
        cover.fill(Qt::darkCyan);
        const QString coverPath = file(u"cover.png"_s);
        QVERIFY(cover.save(coverPath));
        m_env->player().play(track(u"Second"_s, QUrl::fromLocalFile(coverPath).toString()));
        QCOMPARE(view.miniPlayer(), strip);
        QVERIFY(stripShown(view));
        QTRY_VERIFY(strip->showsArtworkImage());

        // A thumbnail text that is no address leaves the placeholder.
        m_env->player().play(track(u"Third"_s, u"not a link"_s));
        QVERIFY(!strip->showsArtworkImage());
        QTest::qWait(100);
        QVERIFY(!strip->showsArtworkImage());
    }

    // Every screen and the mini player take the dark colours when the desktop switches, and
    // keep what the user typed.
    void appearanceSwitch_data()
    {
        QTest::addColumn<NavigationItem>("item");
        for (NavigationItem item : Navigation::allCases())
            QTest::newRow(qPrintable(Navigation::rawValue(item))) << item;
    }
    void appearanceSwitch()
    {
        QFETCH(NavigationItem, item);
        ScreenFactory factory(m_env->services());
        ContentView view(m_env->services(), factory);
        view.setSelectedTab(item);
        view.show();
        m_env->player().play(track(u"song"_s));
        QVERIFY(QTest::qWaitForWindowExposed(&view));
        for (QLineEdit* field : view.currentScreen()->findChildren<QLineEdit*>())
            field->setText(u"typed"_s);
        QVERIFY(!lightLeftovers(&view).isEmpty());

        QApplication::setPalette(Theme::palette(Theme::Scheme::dark));
        QTRY_COMPARE(lightLeftovers(&view), QStringList());
        for (QLineEdit* field : view.currentScreen()->findChildren<QLineEdit*>())
            QCOMPARE(field->text(), u"typed"_s);
    }

    void formatTime_data()
    {
        QTest::addColumn<double>("seconds");
        QTest::addColumn<QString>("text");
        QTest::newRow("zero") << 0.0 << u"0:00"_s;
        QTest::newRow("truncated") << 65.9 << u"1:05"_s;
        QTest::newRow("no hours field") << 3725.0 << u"62:05"_s;
        QTest::newRow("not a number") << std::numeric_limits<double>::quiet_NaN() << u"0:00"_s;
        QTest::newRow("negative") << -4.0 << u"0:00"_s;
    }
    void formatTime()
    {
        QFETCH(double, seconds);
        QFETCH(QString, text);
        QCOMPARE(::formatTime(seconds), text);
    }
};

QTEST_MAIN(TestContentView)
#include "tst_contentview.moc"
