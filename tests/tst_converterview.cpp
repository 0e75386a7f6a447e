#include "support/ScreenFixture.h"
#include "views/components/GradientButton.h"
#include "views/converter/ConverterView.h"
#include "views/converter/StatusPill.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QLineEdit>
#include <QProgressBar>
#include <QTest>

using namespace Qt::StringLiterals;

using namespace ScreenFixture;

namespace {

struct Screen
{
    explicit Screen(Environment& env)
        : view(env.services(), &env.desktop)
    {
        view.resize(880, 900);
        view.show();
    }
    GradientButton* start() { return view.findChild<GradientButton*>(); }
    QLineEdit* link() { return findNamed<QLineEdit>(&view, u"YouTube Video Link"_s); }
    QAbstractButton* button(const QString& name) { return findNamed<QAbstractButton>(&view, name); }
    bool shows(const QString& text) { return visibleTexts(&view).contains(text); }

    ConverterView view;
};

} // namespace

class TestConverterView : public QObject
{
    Q_OBJECT

private slots:
    void rippingTitle_data()
    {
        QTest::addColumn<AudioFormat>("format");
        QTest::addColumn<AudioQuality>("quality");
        QTest::addColumn<QString>("title");
        QTest::newRow("m4a best") << AudioFormat(AudioFormat::m4a)
                                  << AudioQuality(AudioQuality::best)
                                  << u"Rip Audio (M4A \u2022 Best (Auto))"_s;
        QTest::newRow("opus 128") << AudioFormat(AudioFormat::opus)
                                  << AudioQuality(AudioQuality::k128)
                                  << u"Rip Audio (OPUS \u2022 128 kbps)"_s;
        QTest::newRow("flac") << AudioFormat(AudioFormat::flac) << AudioQuality(AudioQuality::k192)
                              << u"Rip Audio (FLAC)"_s;
        QTest::newRow("wav") << AudioFormat(AudioFormat::wav) << AudioQuality(AudioQuality::best)
                             << u"Rip Audio (WAV)"_s;
    }
    // The title follows the engine's choices, and lossless formats swap the quality picker
    // for a note while keeping the engine's quality for later.
    void rippingTitle()
    {
        QFETCH(AudioFormat, format);
        QFETCH(AudioQuality, quality);
        QFETCH(QString, title);
        Environment env;
        Screen screen(env);
        env.engine().setSelectedQuality(quality);
        env.engine().setSelectedFormat(format);
        QCOMPARE(screen.start()->text(), title);
        QCOMPARE(screen.start()->iconName(), u"arrow.down.to.line.compact"_s);

        auto* qualityPicker = findNamed<QComboBox>(&screen.view, u"Audio Quality"_s);
        QCOMPARE(qualityPicker != nullptr, format.supportsBitrate());
        QCOMPARE(screen.shows(u"Lossless / Best Stream"_s), !format.supportsBitrate());
        if (qualityPicker)
            QCOMPARE(qualityPicker->currentText(), quality.displayName());

        // Picking from the format list changes only the engine's choice in memory.
        auto* formatPicker = findNamed<QComboBox>(&screen.view, u"Audio Format"_s);
        QCOMPARE(formatPicker->currentText(), format.displayName());
        formatPicker->activated(0);
        QCOMPARE(env.engine().selectedFormat(), AudioFormat(AudioFormat::mp3));
        QCOMPARE(findNamed<QComboBox>(&screen.view, u"Audio Quality"_s)->currentText(),
                 quality.displayName());
        QVERIFY(!env.savedSettings()->contains(u"defaultFormat"_s));
    }

    // The link field and its buttons, typed and pressed the way a screen reader does: the
    // start button needs a link that is not blank, paste trims, an empty clipboard changes nothing.
    void linkFieldAndStartEnabling()
    {
        Environment env;
        Screen screen(env);
        QAccessibleInterface* field = reachable(&screen.view).value(u"YouTube Video Link"_s);
        QCOMPARE(field->role(), QAccessible::EditableText);
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
        QVERIFY(press(&screen.view, u"Clear"_s));
        QTRY_COMPARE(screen.view.inputUrl(), QString());
        QVERIFY(!screen.button(u"Clear"_s));
        QVERIFY(!screen.start()->isEnabled());

        field->setText(QAccessible::Value, u"old"_s);
        QGuiApplication::clipboard()->clear();
        QVERIFY(press(&screen.view, u"Paste"_s));
        QTest::qWait(300); // past the button's delayed click
        QCOMPARE(screen.view.inputUrl(), u"old"_s);
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
        QVERIFY(press(&screen.view, u"Embed ID3 Tags"_s));
        QTRY_VERIFY(!env.engine().embedMetadata());
        QVERIFY(!env.savedSettings()->contains(u"defaultFormat"_s));

        QString savedFormatAtStart;
        connect(&env.engine(), &DownloadEngine::currentStatusChanged, this, [&] {
            savedFormatAtStart = env.savedSettings()->value(u"defaultFormat"_s).toString();
        });
        QTest::keyClicks(screen.link(), u"  abc  "_s);
        QVERIFY(press(&screen.view, u"Rip Audio (OPUS \u2022 320 kbps)"_s));
        QTRY_VERIFY(!savedFormatAtStart.isEmpty());

        QCOMPARE(savedFormatAtStart, u"opus"_s);
        QCOMPARE(env.savedSettings()->value(u"embedMetadata"_s).toBool(), false);
        QCOMPARE(env.engine().currentStatus().kind(), DownloadStatus::Kind::failed);
        QVERIFY(screen.shows(u"Extraction Failed"_s));
        QVERIFY(screen.shows(u"yt-dlp is missing. Please check Settings."_s));
        QCOMPARE(screen.view.inputUrl(), u"  abc  "_s);
    }

    // The tool gets the trimmed link while the field keeps it as typed, also after a cancel,
    // which leaves the screen idle.
    void startThenCancel()
    {
        Environment env(Tools::both);
        QVERIFY(env.checkTools());
        Screen screen(env);
        screen.link()->setText(u"  abc  "_s);
        QTest::mouseClick(screen.start(), Qt::LeftButton);
        QCOMPARE(env.engine().currentUrl(), u"abc"_s);
        QVERIFY(env.engine().currentStatus().isBusy());
        QTest::mouseClick(screen.button(u"Cancel Download"_s), Qt::LeftButton);
        QTRY_COMPARE(env.engine().currentStatus(), DownloadStatus::idle());
        QVERIFY(!screen.button(u"Cancel Download"_s));
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
        QTest::newRow("idle") << DownloadStatus::idle() << QStringList{}
                              << QStringList{u"Downloading Audio..."_s, u"Extraction Complete!"_s,
                                             u"Extraction Failed"_s}
                              << rip << false;
        QTest::newRow("downloading")
            << DownloadStatus::downloading(0.4567, u"1.2MiB/s"_s, u"00:07"_s, u"4.1MiB"_s)
            << QStringList{u"Downloading Audio..."_s, u"45.7%"_s, u"1.2MiB/s"_s, u"ETA: 00:07"_s,
                           u"4.1MiB"_s}
            << QStringList{u"Extraction Complete!"_s} << busy << false;
        QTest::newRow("downloading, unknown eta")
            << DownloadStatus::downloading(0, u"--"_s, u"--"_s, u"--"_s)
            << QStringList{u"0.0%"_s, u"--"_s} << QStringList{u"ETA: --"_s} << busy << false;
        QTest::newRow("converting")
            << DownloadStatus::converting(u"Converting to MP3 (320 kbps)..."_s)
            << QStringList{u"Converting to MP3 (320 kbps)..."_s}
            << QStringList{u"Downloading Audio..."_s} << busy << false;
        QTest::newRow("completed") << DownloadStatus::completed(u"/music/Some Song.mp3"_s)
                                   << QStringList{u"Extraction Complete!"_s, u"Some Song.mp3"_s}
                                   << QStringList{u"Extraction Failed"_s} << rip << true;
        QTest::newRow("failed") << DownloadStatus::failed(u"ERROR: Video unavailable"_s)
                                << QStringList{u"Extraction Failed"_s,
                                               u"ERROR: Video unavailable"_s}
                                << QStringList{u"Extraction Complete!"_s} << rip << true;
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

        const QStringList texts = visibleTexts(&screen.view);
        for (const QString& text : shown)
            QVERIFY2(texts.contains(text), qPrintable(text));
        for (const QString& text : hidden)
            QVERIFY2(!texts.contains(text), qPrintable(text));
        QCOMPARE(screen.start()->text(), startTitle);
        QCOMPARE(screen.start()->iconName(),
                 status.isBusy() ? u"waveform"_s : u"arrow.down.to.line.compact"_s);
        QCOMPARE(screen.start()->isEnabled(), !status.isBusy());
        const auto nodes = reachable(&screen.view);
        QCOMPARE(nodes.contains(u"New Rip"_s), newRip);
        QCOMPARE(nodes.contains(u"Cancel Download"_s), status.isBusy());
        QCOMPARE(nodes.contains(u"Download progress"_s),
                 status.kind() == DownloadStatus::Kind::downloading);
        if (status.kind() == DownloadStatus::Kind::downloading) {
            auto* bar = screen.view.findChild<QProgressBar*>();
            QCOMPARE(bar->value(), qRound(status.progress() * bar->maximum()));
        }
        // No record has this path, so there is nothing to play, but the file can be shown.
        QVERIFY(!nodes.contains(u"Play"_s));
        QCOMPARE(nodes.contains(u"Show in Folder"_s),
                 status.kind() == DownloadStatus::Kind::completed);
    }

    void statusActions()
    {
        Environment env;
        Screen screen(env);
        screen.link()->setText(u"https://youtu.be/x"_s);

        env.engine().setCurrentStatus(DownloadStatus::failed(u"boom"_s));
        QVERIFY(press(&screen.view, u"Dismiss"_s));
        QTRY_COMPARE(env.engine().currentStatus(), DownloadStatus::idle());
        QVERIFY(!screen.shows(u"Extraction Failed"_s));
        QCOMPARE(screen.view.inputUrl(), u"https://youtu.be/x"_s);
        QVERIFY(screen.start()->isEnabled());

        env.engine().setCurrentStatus(DownloadStatus::completed(u"/m/a b.mp3"_s));
        QVERIFY(press(&screen.view, u"Show in Folder"_s));
        QTRY_COMPARE(env.desktop.revealed, QStringList{u"/m/a b.mp3"_s});
        QVERIFY(press(&screen.view, u"New Rip"_s));
        QTRY_COMPARE(env.engine().currentStatus(), DownloadStatus::idle());
        QCOMPARE(screen.view.inputUrl(), QString());
        QVERIFY(!screen.shows(u"Extraction Complete!"_s));

        QVERIFY(press(&screen.view, u"Open Folder"_s));
        QTRY_COMPARE(env.desktop.opened,
                     QStringList{QDir::cleanPath(env.engine().targetFolder().toLocalFile())});
    }

    // Play appears only for a finished file that is in the library, and shows pause while
    // that very file plays.
    void playFinishedTrack()
    {
        Environment env;
        const QString file = env.path() + u"/Song.wav"_s;
        QVERIFY(writeSilentWav(file, 5));
        HistoryTrack track;
        track.id = QUuid::createUuid();
        track.title = u"Song"_s;
        track.format = AudioFormat::wav;
        track.filePath = file;
        env.history().addTrack(track);

        Screen screen(env);
        env.engine().setCurrentStatus(DownloadStatus::completed(file + u".other"_s));
        QVERIFY(!screen.button(u"Play"_s));
        env.engine().setCurrentStatus(DownloadStatus::completed(file));
        QAbstractButton* play = screen.button(u"Play"_s);
        QVERIFY(play);
        QCOMPARE(play->property("symbol").toString(), u"play.fill"_s);

        QTest::mouseClick(play, Qt::LeftButton);
        QCOMPARE(env.player().currentTrack()->filePath, file);
        QTRY_VERIFY(env.player().isPlaying());
        QCOMPARE(play->property("symbol").toString(), u"pause.fill"_s);
        QTest::mouseClick(play, Qt::LeftButton);
        QTRY_VERIFY(!env.player().isPlaying());
        QCOMPARE(play->property("symbol").toString(), u"play.fill"_s);
        env.player().stop();
    }

    // Checking, missing (with the installer's card, then its progress) and ready.
    void toolStates()
    {
        Environment env(Tools::ytDlpOnly);
        env.pointInstallerAtSilentServer();
        Screen screen(env);
        auto* pill = screen.view.findChild<StatusPill*>();
        const QString missing = u"Tools Missing (yt-dlp or ffmpeg)"_s;

        // While a check runs nothing is known yet: no card.
        env.dependencies().checkDependencies();
        if (env.dependencies().isChecking()) {
            QVERIFY(!screen.shows(missing));
            QCOMPARE(pill->text(), u"Checking Tools"_s);
        }
        QTRY_VERIFY(!env.dependencies().isChecking());
        QVERIFY(screen.shows(missing));
        QVERIFY(screen.shows(
            u"Veldtone can automatically download and set up yt-dlp & ffmpeg for you."_s));
        QCOMPARE(pill->text(), u"Checking Tools"_s);

        QTest::mouseClick(screen.button(u"Install Automatically"_s), Qt::LeftButton);
        QVERIFY(env.dependencies().isInstalling());
        QVERIFY(!screen.button(u"Install Automatically"_s));
        QVERIFY(findNamed(&screen.view, u"In progress"_s));
        QTRY_VERIFY(!env.dependencies().installProgress().isEmpty());
        QVERIFY(screen.shows(env.dependencies().installProgress()));

        Environment ready(Tools::both);
        QVERIFY(ready.checkTools());
        Screen readyScreen(ready);
        QCOMPARE(readyScreen.view.findChild<StatusPill*>()->text(), u"Ready (yt-dlp & ffmpeg)"_s);
        QVERIFY(!readyScreen.shows(missing));
    }
};

QTEST_MAIN(TestConverterView)
#include "tst_converterview.moc"
