// SPDX-License-Identifier: GPL-3.0-or-later
#include "services/AudioPlayerService.h"
#include "services/FollowService.h"
#include "support/ScreenFixture.h"
#include "support/ScriptedBackend.h"
#include "support/TestSupport.h"
#include "views/components/Theme.h"
#include "views/shell/ContentView.h"
#include "views/shell/MainWindow.h"
#include "views/shell/MiniPlayerView.h"
#include "views/shell/ScreenFactory.h"
#include "views/shell/Sidebar.h"

#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QAccessible>
#include <QAccessibleActionInterface>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPointer>
#include <QRegularExpression>
#include <QSet>
#include <QSlider>
#include <QStandardPaths>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

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

    // The sidebar reads as page tabs. Every switch, by any of a screen reader's actions
    // (press, toggle), builds the destination anew.
    void sidebarSwitching()
    {
        ScreenFactory factory(m_env->services());
        ContentView view(m_env->services(), factory);
        view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&view));
        QPointer<QWidget> first = view.currentScreen();
        QCOMPARE(QAccessible::queryAccessibleInterface(view.sidebar())->role(),
                 QAccessible::PageTabList);
        const QList<std::pair<NavigationItem, QString>> screens = {
            {NavigationItem::batch, u"YouTube links, one per line"_s},
            {NavigationItem::history, u"Search tracks"_s},
            {NavigationItem::following, u"Channel or playlist link"_s},
            {NavigationItem::settings, u"Check Dependencies"_s},
            {NavigationItem::convert, u"YouTube Video Link"_s},
        };
        for (const QString& action : {QAccessibleActionInterface::pressAction(),
                                      QAccessibleActionInterface::toggleAction()}) {
            for (const auto& [item, control] : screens) {
                QAccessibleInterface* tab =
                    QAccessible::queryAccessibleInterface(view.sidebar()->row(item));
                QCOMPARE(tab->role(), QAccessible::PageTab);
                tab->actionInterface()->doAction(action);
                QTRY_VERIFY2(ScreenFixture::reachable(&view).contains(control),
                             qPrintable(action + u" did not show "_s + control));
                QVERIFY(tab->state().selected);
                QCOMPARE(view.selectedTab(), item);
            }
        }
        QTRY_VERIFY(first.isNull());
    }

    // Following a link from its screen: the row names it once listed, a link that cannot be
    // listed says why on its row, and unfollowing asks first.
    void followingScreen()
    {
        TestSupport::writeScript(
            file(u"tools/yt-dlp"_s),
            "case \"$*\" in --version) echo 2026.01.01; exit 0;; esac\n"
            "case \"$*\" in *gone*) echo 'ERROR: [youtube:tab] gone: This channel does not "
            "exist' >&2; exit 1;; esac\n"
            "echo '{\"_type\": \"url\", \"url\": \"https://youtu.be/a1\", \"id\": \"a1\", "
            "\"title\": \"One\", \"playlist_title\": \"Harbour Sessions\"}'\n");
        QVERIFY(m_env->checkTools());
        ScreenFactory factory(m_env->services());
        ContentView view(m_env->services(), factory);
        view.setSelectedTab(NavigationItem::following);
        view.show();
        QVERIFY(ScreenFixture::reachable(&view).contains(
            u"Nothing followed yet. Follow a channel or a playlist: Veldtone looks at it again "
            "after it starts and every few hours, and rips each new upload once, as you chose "
            "when you followed it."_s));
        auto* field = ScreenFixture::findNamed<QLineEdit>(view.currentScreen(),
                                                          u"Channel or playlist link"_s);
        int followed = 0;
        for (const QString& link : {u"https://www.youtube.com/playlist?list=PLharbour"_s,
                                    u"https://www.youtube.com/@gone"_s}) {
            field->setText(link);
            QVERIFY(ScreenFixture::press(view.currentScreen(), u"Follow"_s));
            ++followed;
            QTRY_COMPARE(m_env->following().subscriptions().size(), followed);
            QTRY_VERIFY(!m_env->following().checking());
        }
        QTRY_VERIFY(ScreenFixture::reachable(&view).contains(u"Harbour Sessions"_s));
        const QStringList texts = ScreenFixture::reachable(&view).keys();
        QVERIFY(texts.contains(u"Checked just now \u2022 0 tracks found"_s));
        QVERIFY(std::any_of(texts.cbegin(), texts.cend(), [](const QString& text) {
            return text.contains(u"This channel does not exist"_s);
        }));
        QVERIFY(ScreenFixture::press(view.currentScreen(), u"Unfollow Harbour Sessions"_s));
        QTRY_VERIFY(ScreenFixture::openQuestion(&view));
        ScreenFixture::findButtonStarting(ScreenFixture::openQuestion(&view), u"Unfollow"_s)
            ->click();
        QTRY_COMPARE(m_env->following().subscriptions().size(), 1);
        QTRY_VERIFY(!ScreenFixture::reachable(&view).contains(u"Harbour Sessions"_s));
    }

    // Tab alone walks every screen: sidebar, then screen, then the mini player made at the first
    // play; every stop is named, and Space works a button, check box, picker or field there and
    // is Play / Pause anywhere else, and on a clicked button.
    void keyboardWalk()
    {
        ScreenFactory factory(m_env->services());
        MainWindow window(m_env->services(), factory);
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        AudioPlayerService& player = m_env->player();
        const HistoryTrack song = track(u"Harbour Song"_s);
        ScreenFixture::writeSilentWav(song.filePath, 60);
        player.play(song);
        QTRY_VERIFY(player.isPlaying());
        const auto key = [](Qt::Key k) { QTest::keyClick(static_cast<QWidget*>(nullptr), k); };
        const auto spacePlays = [&] {
            const bool was = player.isPlaying();
            key(Qt::Key_Space);
            return QTest::qWaitFor([&] { return player.isPlaying() != was; }, 3000);
        };
        QWidget* clicked = window.contentView()->sidebar()->row(NavigationItem::batch);
        QTest::mouseClick(clicked, Qt::LeftButton);
        QVERIFY(QApplication::focusWidget() != clicked);
        QVERIFY(spacePlays());
        // The sidebar is one stop; the arrows move along its rows.
        window.contentView()->setSelectedTab(NavigationItem::history);
        window.contentView()->sidebar()->row(NavigationItem::history)->setFocus(Qt::TabFocusReason);
        key(Qt::Key_Up);
        QCOMPARE(window.contentView()->selectedTab(), NavigationItem::batch);
        QCOMPARE(QApplication::focusWidget(),
                 window.contentView()->sidebar()->row(NavigationItem::batch));
        for (NavigationItem item : Navigation::allCases()) {
            window.contentView()->setSelectedTab(item);
            QTRY_VERIFY(window.contentView()->currentScreen()->isVisible());
            // Symbols are pictures: no icon-font ligature ("search") is read out.
            const QStringList glyphs = ScreenFixture::reachable(&window).keys().filter(
                QRegularExpression(u"^(?!ffmpeg$)[a-z]+(_[a-z]+)*$"_s));
            QVERIFY2(glyphs.isEmpty(), qPrintable(glyphs.join(u", ")));
            MiniPlayerView* strip = window.contentView()->miniPlayer();
            QList<QWidget*> walked;
            for (QWidget* at = nullptr; walked.size() < 80 && !walked.contains(at);) {
                if (at)
                    walked << at;
                key(Qt::Key_Tab);
                at = QApplication::focusWidget();
            }
            // The same cycle, started at the sidebar (one stop: arrows move along its rows).
            const QList<QWidget*> order = window.contentView()->tabOrder();
            std::rotate(walked.begin(), std::find(walked.begin(), walked.end(), order.first()),
                        walked.end());
            QCOMPARE(walked, order);
            QVERIFY(window.contentView()->sidebar()->isAncestorOf(order.first()));
            QVERIFY(strip->isAncestorOf(order.last()));
            for (QWidget* control : walked) {
                QAccessibleInterface* node = QAccessible::queryAccessibleInterface(control);
                const QString what = node->text(QAccessible::Name);
                QVERIFY2(!what.isEmpty() && node->state().focusable,
                         control->metaObject()->className());
                control->setFocus(Qt::TabFocusReason);
                auto* button = qobject_cast<QAbstractButton*>(control);
                auto* combo = qobject_cast<QComboBox*>(control);
                auto* menuButton = qobject_cast<QToolButton*>(control);
                const char* text = qobject_cast<QLineEdit*>(control)        ? "text"
                                   : qobject_cast<QPlainTextEdit*>(control) ? "plainText"
                                                                            : nullptr;
                if (text) {
                    const QString before = control->property(text).toString();
                    key(Qt::Key_Space);
                    QVERIFY2(control->property(text).toString() != before, qPrintable(what));
                    key(Qt::Key_Backspace);
                } else if (auto* spin = qobject_cast<QAbstractSpinBox*>(control)) {
                    // A number field: Space is typed into it, the arrows step it.
                    const QString before = spin->text();
                    key(Qt::Key_Up);
                    QVERIFY2(spin->text() != before, qPrintable(what));
                    key(Qt::Key_Down);
                } else if (qobject_cast<QCheckBox*>(control)) {
                    const bool was = button->isChecked();
                    key(Qt::Key_Space);
                    QVERIFY2(button->isChecked() != was, qPrintable(what));
                    key(Qt::Key_Space);
                } else if (menuButton && menuButton->popupMode() == QToolButton::InstantPopup) {
                    bool opened = false;
                    QTimer closer;
                    connect(&closer, &QTimer::timeout, [&opened] {
                        if (QWidget* menu = QApplication::activePopupWidget())
                            opened = menu->close();
                    });
                    closer.start(5);
                    key(Qt::Key_Space);
                    QTRY_VERIFY2(opened, qPrintable(what));
                } else if (button) {
                    // Down on the key, clicked only on its release: leaving lets it go.
                    QTest::keyPress(static_cast<QWidget*>(nullptr), Qt::Key_Space);
                    QVERIFY2(button->isDown(), qPrintable(what));
                    control->clearFocus();
                } else if (combo) {
                    key(Qt::Key_Space);
                    QTRY_VERIFY2(combo->view()->isVisible(), qPrintable(what));
                    key(Qt::Key_Escape);
                    QTRY_VERIFY(!combo->view()->isVisible());
                } else {
                    QVERIFY2(spacePlays(), qPrintable(what));
                }
            }
        }
    }

    // The seek slider steps 5 s per arrow and 30 s per page, and is read out as a time.
    void seekSliderSpeaksTime()
    {
        AudioPlayerService player([] { return std::make_unique<ScriptedBackend>(); });
        MiniPlayerView view(player, m_env->history(), m_env->services().artwork);
        player.play(track(u"song"_s));
        player.seek(65);
        auto* slider = ScreenFixture::findNamed<QSlider>(&view, u"Playback Position"_s);
        QCOMPARE(slider->accessibleDescription(), u"1:05 of 1:35"_s);
        QTest::keyClick(slider, Qt::Key_Right);
        QCOMPARE(player.currentTime(), 70.0);
        QTest::keyClick(slider, Qt::Key_PageDown);
        QCOMPARE(player.currentTime(), 40.0);
        player.stop();
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
        // A spin box's own field takes numbers only.
        const auto textFields = [&view] {
            QList<QLineEdit*> fields = view.currentScreen()->findChildren<QLineEdit*>();
            fields.removeIf([](QLineEdit* field) {
                return qobject_cast<QAbstractSpinBox*>(field->parent()) != nullptr;
            });
            return fields;
        };
        for (QLineEdit* field : textFields())
            field->setText(u"typed"_s);
        QVERIFY(!lightLeftovers(&view).isEmpty());

        // The strip's painted controls are named for a screen reader.
        for (const QString& name : {u"Close Player"_s, u"Pause"_s, u"Playback Position"_s,
                                    u"Show in Folder"_s, u"Stop"_s, u"Volume"_s})
            QVERIFY2(ScreenFixture::reachable(view.miniPlayer()).contains(name), qPrintable(name));

        QApplication::setPalette(Theme::palette(Theme::Scheme::dark));
        QTRY_VERIFY2(lightLeftovers(&view).isEmpty(),
                     qPrintable(lightLeftovers(&view).join(u"; "_s)));
        for (QLineEdit* field : textFields())
            QCOMPARE(field->text(), u"typed"_s);
    }
};

QTEST_MAIN(TestContentView)
#include "tst_contentview.moc"
