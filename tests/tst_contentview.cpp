#include "services/AudioPlayerService.h"
#include "support/ScreenFixture.h"
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
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QSet>
#include <QStandardPaths>
#include <QTest>
#include <QToolButton>
#include <QVBoxLayout>
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

    // Space plays or pauses, except in a text field or a check box;
    // Ctrl+. stops and hides the strip.
    void playbackShortcuts()
    {
        TextFieldFactory factory(m_env->services());
        MainWindow window(m_env->services(), factory);
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        const ContentView& view = *window.contentView();

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

        // The strip's painted controls are named for a screen reader.
        for (const QString& name : {u"Close Player"_s, u"Pause"_s, u"Playback Position"_s,
                                    u"Show in Folder"_s, u"Stop"_s, u"Volume"_s})
            QVERIFY2(ScreenFixture::reachable(view.miniPlayer()).contains(name), qPrintable(name));

        QApplication::setPalette(Theme::palette(Theme::Scheme::dark));
        QTRY_COMPARE(lightLeftovers(&view), QStringList());
        for (QLineEdit* field : view.currentScreen()->findChildren<QLineEdit*>())
            QCOMPARE(field->text(), u"typed"_s);
    }
};

QTEST_MAIN(TestContentView)
#include "tst_contentview.moc"
