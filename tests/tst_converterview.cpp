// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/EngineFixture.h"
#include "support/ScreenFixture.h"
#include "support/TestSupport.h"
#include "views/components/GradientButton.h"
#include "views/converter/ConverterView.h"
#include "views/converter/StatusPill.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QLineEdit>
#include <QProgressBar>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

using namespace ScreenFixture;

namespace {

struct Screen
{
    explicit Screen(Environment& env)
        : view(env.engine(), env.services().dependencies, env.history(), env.player(), env.batch(),
               env.preview(), env.services().updater, &env.desktop)
    {
        view.resize(880, 900);
        view.show();
    }
    GradientButton* start() { return view.findChild<GradientButton*>(); }
    QLineEdit* link() { return findNamed<QLineEdit>(&view, u"YouTube Video Link"_s); }
    QAbstractButton* button(const QString& name) { return findNamed<QAbstractButton>(&view, name); }
    bool shows(const QString& text) { return reachable(&view).contains(text); }

    ConverterView view;
};

} // namespace

class TestConverterView : public QObject
{
    Q_OBJECT

private slots:
    // The link field and its buttons, typed and pressed the way a screen reader does: the
    // start button needs a link that is not blank, and paste trims.
    void linkFieldAndStartEnabling()
    {
        Environment env;
        Screen screen(env);
        QAccessibleInterface* field = reachable(&screen.view).value(u"YouTube Video Link"_s);
        QVERIFY(!screen.start()->isEnabled());
        QVERIFY(!screen.button(u"Clear"_s));

        QTest::keyClick(screen.link(), Qt::Key_Space);
        QVERIFY(screen.button(u"Clear"_s)); // a lone space already counts
        QVERIFY(!screen.start()->isEnabled());
        field->setText(QAccessible::Value, u" \n\t "_s);
        QVERIFY(!screen.start()->isEnabled());
        field->setText(QAccessible::Value, u"  abc  "_s);
        QCOMPARE(screen.view.inputUrl(), u"  abc  "_s);
        QVERIFY(screen.start()->isEnabled());
        // Lossless formats name no bitrate and swap the quality picker for a note.
        env.engine().setSelectedFormat(AudioFormat::flac);
        QCOMPARE(screen.start()->text(), u"Rip Audio (FLAC)"_s);
        QVERIFY(!findNamed<QComboBox>(&screen.view, u"Audio Quality"_s));
        QVERIFY(screen.shows(u"Lossless / Best Stream"_s));
        QVERIFY(press(&screen.view, u"Clear"_s));
        QTRY_COMPARE(screen.view.inputUrl(), QString());
        QVERIFY(!screen.start()->isEnabled());
        QGuiApplication::clipboard()->setText(u"  https://youtu.be/x  "_s);
        QVERIFY(press(&screen.view, u"Paste"_s));
        QTRY_COMPARE(screen.view.inputUrl(), u"https://youtu.be/x"_s);
    }

    // The start button saves the screen's choices first, then hands the link over as typed;
    // the engine's refusal arrives as the failure card.
    void startSavesThenStarts()
    {
        Environment env(Tools::none);
        Screen screen(env);
        auto* formatPicker = findNamed<QComboBox>(&screen.view, u"Audio Format"_s);
        formatPicker->activated(formatPicker->findData(u"opus"_s));
        QVERIFY(!env.savedSettings()->contains(u"defaultFormat"_s));

        QString savedFormatAtStart;
        connect(&env.engine(), &DownloadEngine::currentStatusChanged, this, [&] {
            savedFormatAtStart = env.savedSettings()->value(u"defaultFormat"_s).toString();
        });
        QTest::keyClicks(screen.link(), u"  abc  "_s);
        QVERIFY(press(&screen.view, u"Rip Audio (OPUS \u2022 320 kbps)"_s));
        QTRY_VERIFY(!savedFormatAtStart.isEmpty());

        QCOMPARE(savedFormatAtStart, u"opus"_s);
        QVERIFY(screen.shows(u"yt-dlp is missing. Please check Settings."_s));
        QCOMPARE(screen.view.inputUrl(), u"  abc  "_s);
    }

    void statusCards_data()
    {
        QTest::addColumn<DownloadStatus>("status");
        QTest::addColumn<QStringList>("shown");
        QTest::addColumn<QStringList>("hidden");
        QTest::addColumn<QString>("startTitle");
        QTest::addColumn<bool>("newRip");

        const QString rip = u"Rip Audio (MP3 \u2022 320 kbps)"_s;
        const QString busy = u"Extracting Audio..."_s;
        QTest::newRow("downloading")
            << DownloadStatus::downloading(0.4567, u"1.2MiB/s"_s, u"00:07"_s, u"4.1MiB"_s)
            << QStringList{u"Downloading Audio..."_s, u"45.7%"_s, u"1.2MiB/s"_s, u"ETA: 00:07"_s,
                           u"4.1MiB"_s}
            << QStringList{u"Extraction Complete!"_s} << busy << false;
        QTest::newRow("downloading, unknown eta")
            << DownloadStatus::downloading(0, u"--"_s, u"--"_s, u"--"_s)
            << QStringList{u"0.0%"_s, u"--"_s} << QStringList{u"ETA: --"_s} << busy << false;
        QTest::newRow("completed") << DownloadStatus::completed(u"/music/Some Song.mp3"_s)
                                   << QStringList{u"Extraction Complete!"_s, u"Some Song.mp3"_s}
                                   << QStringList{u"Extraction Failed"_s} << rip << true;
        QTest::newRow("failed") << DownloadStatus::failed(u"ERROR: Video unavailable"_s)
                                << QStringList{u"Extraction Failed"_s,
                                               u"ERROR: Video unavailable"_s}
                                << QStringList{u"Extraction Complete!"_s, u"Open Settings"_s} << rip
                                << true;
        QTest::newRow("failed, bot check")
            << DownloadStatus::failed(u"[youtube] x: Sign in to confirm you’re not a bot"_s)
            << QStringList{u"Open Settings"_s,
                           u"The site wants a signed-in browser. Choose one under \"Use "
                           u"cookies from\" in Settings."_s}
            << QStringList{} << rip << true;
    }
    void statusCards()
    {
        QFETCH(DownloadStatus, status);
        QFETCH(QStringList, shown);
        QFETCH(QStringList, hidden);
        QFETCH(QString, startTitle);
        QFETCH(bool, newRip);
        Environment env;
        Screen screen(env);
        screen.link()->setText(u"https://youtu.be/x"_s);
        env.engine().setCurrentStatus(status);

        const auto nodes = reachable(&screen.view);
        for (const QString& text : shown)
            QVERIFY2(nodes.contains(text), qPrintable(text));
        for (const QString& text : hidden)
            QVERIFY2(!nodes.contains(text), qPrintable(text));
        QCOMPARE(screen.start()->text(), startTitle);
        QCOMPARE(screen.start()->isEnabled(), !status.isBusy());
        QCOMPARE(nodes.contains(u"New Rip"_s), newRip);
        QCOMPARE(nodes.contains(u"Cancel Download"_s), status.isBusy());
        QCOMPARE(nodes.contains(u"Download progress"_s),
                 status.kind() == DownloadStatus::Kind::downloading);
        if (status.kind() == DownloadStatus::Kind::downloading) {
            auto* bar = screen.view.findChild<QProgressBar*>();
            QCOMPARE(bar->value(), qRound(status.progress() * bar->maximum()));
        }
        // No record has this path, so there is nothing to play.
        QVERIFY(!nodes.contains(u"Play"_s));
    }

    void statusActions()
    {
        Environment env;
        Screen screen(env);
        screen.link()->setText(u"https://youtu.be/x"_s);

        env.engine().setCurrentStatus(DownloadStatus::failed(u"boom"_s));
        env.engine().setCurrentStatus(DownloadStatus::failed(u"Sign in to confirm your age"_s));
        QSignalSpy navigation(&screen.view, &ConverterView::navigationRequested);
        QVERIFY(press(&screen.view, u"Open Settings"_s));
        QTRY_COMPARE(navigation.size(), 1);
        QCOMPARE(navigation.first().first().value<NavigationItem>(), NavigationItem::settings);
        QVERIFY(press(&screen.view, u"Dismiss"_s));
        QTRY_COMPARE(env.engine().currentStatus(), DownloadStatus::idle());
        QCOMPARE(screen.view.inputUrl(), u"https://youtu.be/x"_s);

        env.engine().setCurrentStatus(DownloadStatus::completed(u"/m/a b.mp3"_s));
        QVERIFY(press(&screen.view, u"Show in Folder"_s));
        QTRY_COMPARE(env.desktop.revealed, QStringList{u"/m/a b.mp3"_s});
        QVERIFY(press(&screen.view, u"New Rip"_s));
        QTRY_COMPARE(env.engine().currentStatus(), DownloadStatus::idle());
        QCOMPARE(screen.view.inputUrl(), QString());
    }

    // Checking, missing (with the installer's card) and ready.
    void toolStates()
    {
        Environment env(Tools::ytDlpOnly);
        Screen screen(env);
        auto* pill = screen.view.findChild<StatusPill*>();
        const QString missing = u"Tools Missing (yt-dlp or ffmpeg)"_s;
        QVERIFY(env.checkTools());
        QVERIFY(screen.shows(missing));
        QCOMPARE(pill->text(), u"Checking Tools"_s);
        QVERIFY(screen.button(u"Install Automatically"_s));

        Environment ready(Tools::both);
        QVERIFY(ready.checkTools());
        Screen readyScreen(ready);
        QCOMPARE(readyScreen.view.findChild<StatusPill*>()->text(), u"Ready (yt-dlp & ffmpeg)"_s);
        QVERIFY(!readyScreen.shows(missing));
    }

    // The playlist offer: a listing can be cancelled, one that finds nothing offers nothing,
    // and the offer goes with the link when the screen is made again with an empty field.
    void playlistOffer()
    {
        Environment env;
        TestSupport::writeScript(env.path() + u"/tools/yt-dlp"_s,
                                 "case \"$*\" in --version) echo 2026.01.01; exit 0;; esac\n"
                                 "case \"$*\" in *PLslow*) sleep 30 & wait;; esac\nexit 0\n");
        QVERIFY(env.checkTools());
        auto screen = std::make_unique<Screen>(env);
        screen->link()->setText(u"https://www.youtube.com/playlist?list=PLslow"_s);
        QTest::mouseClick(screen->start(), Qt::LeftButton);
        QVERIFY(env.preview().isListing());
        QVERIFY(press(&screen->view, u"Cancel Listing"_s));
        QTRY_VERIFY(!env.preview().isListing());
        QVERIFY(!screen->shows(u"This link is a playlist."_s));
        QTRY_VERIFY(EngineFixture::processesMentioning(u"PLslow"_s).isEmpty());

        screen->link()->setText(u"https://www.youtube.com/playlist?list=PLempty"_s);
        QTest::mouseClick(screen->start(), Qt::LeftButton);
        QTRY_VERIFY(screen->shows(u"The playlist has no tracks."_s));
        QVERIFY(!findButtonStarting(&screen->view, u"Rip all"_s));

        screen.reset();
        screen = std::make_unique<Screen>(env);
        QVERIFY(env.preview().link().isEmpty());
        QVERIFY(!screen->shows(u"The playlist has no tracks."_s));
    }
};

QTEST_MAIN(TestConverterView)
#include "tst_converterview.moc"
