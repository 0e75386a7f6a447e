#include "support/ScreenFixture.h"
#include "views/ConverterView.h"
#include "views/ElidedLabel.h"
#include "views/StatusPill.h"
#include "views/components/GradientButton.h"
#include "views/components/Theme.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QStandardPaths>
#include <QTest>
#include <QTimer>

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
    QLineEdit* link() { return findNamed<QLineEdit>(&view, QStringLiteral("YouTube Video Link")); }
    QAbstractButton* button(const QString& name) { return findNamed<QAbstractButton>(&view, name); }
    bool shows(const QString& text) { return visibleTexts(&view).contains(text); }

    ConverterView view;
};

} // namespace

class TestConverterView : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }

    void rippingTitle_data()
    {
        QTest::addColumn<AudioFormat>("format");
        QTest::addColumn<AudioQuality>("quality");
        QTest::addColumn<QString>("title");
        QTest::newRow("mp3 320") << AudioFormat(AudioFormat::mp3)
                                 << AudioQuality(AudioQuality::k320)
                                 << QStringLiteral("Rip Audio (MP3 \u2022 320 kbps)");
        QTest::newRow("m4a best") << AudioFormat(AudioFormat::m4a)
                                  << AudioQuality(AudioQuality::best)
                                  << QStringLiteral("Rip Audio (M4A \u2022 Best (Auto))");
        QTest::newRow("opus 128") << AudioFormat(AudioFormat::opus)
                                  << AudioQuality(AudioQuality::k128)
                                  << QStringLiteral("Rip Audio (OPUS \u2022 128 kbps)");
        QTest::newRow("flac") << AudioFormat(AudioFormat::flac) << AudioQuality(AudioQuality::k192)
                              << QStringLiteral("Rip Audio (FLAC)");
        QTest::newRow("wav") << AudioFormat(AudioFormat::wav) << AudioQuality(AudioQuality::best)
                             << QStringLiteral("Rip Audio (WAV)");
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
        QCOMPARE(screen.start()->iconName(), QStringLiteral("arrow.down.to.line.compact"));

        auto* qualityPicker = findNamed<QComboBox>(&screen.view, QStringLiteral("Audio Quality"));
        QCOMPARE(qualityPicker != nullptr, format.supportsBitrate());
        QCOMPARE(screen.shows(QStringLiteral("Lossless / Best Stream")), !format.supportsBitrate());
        if (qualityPicker)
            QCOMPARE(qualityPicker->currentText(), quality.displayName());

        // Picking from the format list changes only the engine's choice in memory.
        auto* formatPicker = findNamed<QComboBox>(&screen.view, QStringLiteral("Audio Format"));
        QCOMPARE(formatPicker->currentText(), format.displayName());
        formatPicker->activated(0);
        QCOMPARE(env.engine().selectedFormat(), AudioFormat(AudioFormat::mp3));
        QCOMPARE(findNamed<QComboBox>(&screen.view, QStringLiteral("Audio Quality"))->currentText(),
                 quality.displayName());
        QVERIFY(!env.savedSettings()->contains(QStringLiteral("defaultFormat")));
    }

    void linkFieldAndStartEnabling()
    {
        Environment env;
        Screen screen(env);
        QVERIFY(screen.link());
        QVERIFY(!screen.start()->isEnabled());
        QVERIFY(!screen.button(QStringLiteral("Clear")));

        QTest::keyClick(screen.link(), Qt::Key_Space);
        QVERIFY(screen.button(QStringLiteral("Clear"))); // a lone space already counts
        QVERIFY(!screen.start()->isEnabled());

        screen.link()->setText(QStringLiteral(" \n\t "));
        QVERIFY(!screen.start()->isEnabled());
        screen.link()->setText(QStringLiteral("  abc  "));
        QVERIFY(screen.start()->isEnabled());

        QTest::mouseClick(screen.button(QStringLiteral("Clear")), Qt::LeftButton);
        QCOMPARE(screen.view.inputUrl(), QString());
        QVERIFY(!screen.button(QStringLiteral("Clear")));
        QVERIFY(!screen.start()->isEnabled());
    }

    // The start button saves the screen's choices first, then hands the link over as typed;
    // the engine's refusal arrives as the failure card.
    void startSavesThenStarts()
    {
        Environment env(Tools::none);
        Screen screen(env);
        auto* formatPicker = findNamed<QComboBox>(&screen.view, QStringLiteral("Audio Format"));
        formatPicker->activated(formatPicker->findData(QStringLiteral("opus")));
        QTest::mouseClick(findNamed<QCheckBox>(&screen.view, QStringLiteral("Embed ID3 Tags")),
                          Qt::LeftButton, {}, QPoint(5, 5));
        QVERIFY(!env.engine().embedMetadata());
        QVERIFY(!env.savedSettings()->contains(QStringLiteral("defaultFormat")));

        QString savedFormatAtStart;
        connect(&env.engine(), &DownloadEngine::currentStatusChanged, this, [&] {
            savedFormatAtStart =
                env.savedSettings()->value(QStringLiteral("defaultFormat")).toString();
        });
        QTest::keyClicks(screen.link(), QStringLiteral("  abc  "));
        QTest::mouseClick(screen.start(), Qt::LeftButton);

        QCOMPARE(savedFormatAtStart, QStringLiteral("opus"));
        QCOMPARE(env.savedSettings()->value(QStringLiteral("embedMetadata")).toBool(), false);
        QCOMPARE(env.engine().currentStatus().kind(), DownloadStatus::Kind::failed);
        QVERIFY(screen.shows(QStringLiteral("Extraction Failed")));
        QVERIFY(screen.shows(QStringLiteral("yt-dlp is missing. Please check Settings.")));
        QCOMPARE(screen.view.inputUrl(), QStringLiteral("  abc  "));
    }

    // The tool gets the trimmed link while the field keeps it as typed, also after a cancel,
    // which leaves the screen idle.
    void startThenCancel()
    {
        Environment env(Tools::both);
        QVERIFY(env.checkTools());
        Screen screen(env);
        screen.link()->setText(QStringLiteral("  abc  "));
        QTest::mouseClick(screen.start(), Qt::LeftButton);
        QCOMPARE(env.engine().currentUrl(), QStringLiteral("abc"));
        QVERIFY(env.engine().currentStatus().isBusy());
        QTest::mouseClick(screen.button(QStringLiteral("Cancel Download")), Qt::LeftButton);
        QTRY_COMPARE(env.engine().currentStatus(), DownloadStatus::idle());
        QVERIFY(!screen.button(QStringLiteral("Cancel Download")));
        QCOMPARE(screen.view.inputUrl(), QStringLiteral("  abc  "));
    }

    void statusCards_data()
    {
        QTest::addColumn<DownloadStatus>("status");
        QTest::addColumn<QStringList>("shown");
        QTest::addColumn<QStringList>("hidden");
        QTest::addColumn<QString>("startTitle");
        QTest::addColumn<bool>("newRip");

        const QString rip = QStringLiteral("Rip Audio (MP3 \u2022 320 kbps)");
        const QString busy = QStringLiteral("Extracting Audio...");
        QTest::newRow("idle") << DownloadStatus::idle() << QStringList{}
                              << QStringList{QStringLiteral("Downloading Audio..."),
                                             QStringLiteral("Extraction Complete!"),
                                             QStringLiteral("Extraction Failed")}
                              << rip << false;
        QTest::newRow("downloading")
            << DownloadStatus::downloading(0.4567, QStringLiteral("1.2MiB/s"),
                                           QStringLiteral("00:07"), QStringLiteral("4.1MiB"))
            << QStringList{QStringLiteral("Downloading Audio..."), QStringLiteral("45.7%"),
                           QStringLiteral("1.2MiB/s"), QStringLiteral("ETA: 00:07"),
                           QStringLiteral("4.1MiB")}
            << QStringList{QStringLiteral("Extraction Complete!")} << busy << false;
        QTest::newRow("downloading, unknown eta")
            << DownloadStatus::downloading(0, QStringLiteral("--"), QStringLiteral("--"),
                                           QStringLiteral("--"))
            << QStringList{QStringLiteral("0.0%"), QStringLiteral("--")}
            << QStringList{QStringLiteral("ETA: --")} << busy << false;
        QTest::newRow("converting")
            << DownloadStatus::converting(QStringLiteral("Converting to MP3 (320 kbps)..."))
            << QStringList{QStringLiteral("Converting to MP3 (320 kbps)...")}
            << QStringList{QStringLiteral("Downloading Audio...")} << busy << false;
        QTest::newRow("completed")
            << DownloadStatus::completed(QStringLiteral("/music/Some Song.mp3"))
            << QStringList{QStringLiteral("Extraction Complete!"), QStringLiteral("Some Song.mp3")}
            << QStringList{QStringLiteral("Extraction Failed")} << rip << true;
        QTest::newRow("failed") << DownloadStatus::failed(
                                       QStringLiteral("ERROR: Video unavailable"))
                                << QStringList{QStringLiteral("Extraction Failed"),
                                               QStringLiteral("ERROR: Video unavailable")}
                                << QStringList{QStringLiteral("Extraction Complete!")} << rip
                                << true;
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
        screen.link()->setText(QStringLiteral("https://youtu.be/x"));
        env.engine().setCurrentStatus(status);

        const QStringList texts = visibleTexts(&screen.view);
        for (const QString& text : shown)
            QVERIFY2(texts.contains(text), qPrintable(text));
        for (const QString& text : hidden)
            QVERIFY2(!texts.contains(text), qPrintable(text));
        QCOMPARE(screen.start()->text(), startTitle);
        QCOMPARE(screen.start()->iconName(), status.isBusy()
                                                 ? QStringLiteral("waveform")
                                                 : QStringLiteral("arrow.down.to.line.compact"));
        QCOMPARE(screen.start()->isEnabled(), !status.isBusy());
        QCOMPARE(screen.button(QStringLiteral("New Rip")) != nullptr, newRip);
        QCOMPARE(screen.button(QStringLiteral("Cancel Download")) != nullptr, status.isBusy());
        if (status.kind() == DownloadStatus::Kind::downloading) {
            auto* bar = screen.view.findChild<QProgressBar*>();
            QCOMPARE(bar->value(), qRound(status.progress() * bar->maximum()));
        }
        // No record has this path, so there is nothing to play, but the file can be shown.
        QVERIFY(!screen.button(QStringLiteral("Play")));
        QCOMPARE(screen.button(QStringLiteral("Show in Folder")) != nullptr,
                 status.kind() == DownloadStatus::Kind::completed);
    }

    void statusActions()
    {
        Environment env;
        Screen screen(env);
        screen.link()->setText(QStringLiteral("https://youtu.be/x"));

        env.engine().setCurrentStatus(DownloadStatus::failed(QStringLiteral("boom")));
        QTest::mouseClick(screen.button(QStringLiteral("Dismiss")), Qt::LeftButton);
        QCOMPARE(env.engine().currentStatus(), DownloadStatus::idle());
        QVERIFY(!screen.shows(QStringLiteral("Extraction Failed")));
        QCOMPARE(screen.view.inputUrl(), QStringLiteral("https://youtu.be/x"));
        QVERIFY(screen.start()->isEnabled());

        env.engine().setCurrentStatus(DownloadStatus::completed(QStringLiteral("/m/a b.mp3")));
        QTest::mouseClick(screen.button(QStringLiteral("Show in Folder")), Qt::LeftButton);
        QCOMPARE(env.desktop.revealed, QStringList{QStringLiteral("/m/a b.mp3")});
        QTest::mouseClick(screen.button(QStringLiteral("New Rip")), Qt::LeftButton);
        QCOMPARE(env.engine().currentStatus(), DownloadStatus::idle());
        QCOMPARE(screen.view.inputUrl(), QString());
        QVERIFY(!screen.button(QStringLiteral("New Rip")));
        QVERIFY(!screen.shows(QStringLiteral("Extraction Complete!")));

        QTest::mouseClick(screen.button(QStringLiteral("Open Folder")), Qt::LeftButton);
        QCOMPARE(env.desktop.opened,
                 QStringList{QDir::cleanPath(env.engine().targetFolder().toLocalFile())});
    }

    // Play appears only for a finished file that is in the library, and shows pause while
    // that very file plays.
    void playFinishedTrack()
    {
        Environment env;
        const QString file = env.path() + QStringLiteral("/Song.wav");
        QVERIFY(writeSilentWav(file, 5));
        HistoryTrack track;
        track.id = QUuid::createUuid();
        track.title = QStringLiteral("Song");
        track.format = AudioFormat::wav;
        track.filePath = file;
        env.history().addTrack(track);

        Screen screen(env);
        env.engine().setCurrentStatus(DownloadStatus::completed(file + QStringLiteral(".other")));
        QVERIFY(!screen.button(QStringLiteral("Play")));
        env.engine().setCurrentStatus(DownloadStatus::completed(file));
        QAbstractButton* play = screen.button(QStringLiteral("Play"));
        QVERIFY(play);
        QCOMPARE(play->property("symbol").toString(), QStringLiteral("play.fill"));

        QTest::mouseClick(play, Qt::LeftButton);
        QCOMPARE(env.player().currentTrack()->filePath, file);
        QTRY_VERIFY(env.player().isPlaying());
        QCOMPARE(play->property("symbol").toString(), QStringLiteral("pause.fill"));
        QTest::mouseClick(play, Qt::LeftButton);
        QTRY_VERIFY(!env.player().isPlaying());
        QCOMPARE(play->property("symbol").toString(), QStringLiteral("play.fill"));
        env.player().stop();
    }

    void toolStates()
    {
        Environment env(Tools::ytDlpOnly);
        Screen screen(env);
        auto* pill = screen.view.findChild<StatusPill*>();
        const QString missing = QStringLiteral("Tools Missing (yt-dlp or ffmpeg)");

        // While a check runs nothing is known yet: no card.
        env.dependencies().checkDependencies();
        if (env.dependencies().isChecking()) {
            QVERIFY(!screen.shows(missing));
            QCOMPARE(pill->text(), QStringLiteral("Checking Tools"));
        }
        QTRY_VERIFY(!env.dependencies().isChecking());
        QVERIFY(screen.shows(missing));
        QVERIFY(screen.shows(QStringLiteral(
            "Veldtone can automatically download and set up yt-dlp & ffmpeg for you.")));
        QVERIFY(screen.button(QStringLiteral("Install Automatically")));
        QCOMPARE(pill->text(), QStringLiteral("Checking Tools"));

        Environment ready(Tools::both);
        QVERIFY(ready.checkTools());
        Screen readyScreen(ready);
        QCOMPARE(readyScreen.view.findChild<StatusPill*>()->text(),
                 QStringLiteral("Ready (yt-dlp & ffmpeg)"));
        QVERIFY(!readyScreen.shows(missing));
    }

    void installing()
    {
        Environment env(Tools::none);
        env.pointInstallerAtSilentServer();
        QVERIFY(env.checkTools());
        Screen screen(env);
        QTest::mouseClick(screen.button(QStringLiteral("Install Automatically")), Qt::LeftButton);
        QVERIFY(env.dependencies().isInstalling());
        QVERIFY(!screen.button(QStringLiteral("Install Automatically")));
        QVERIFY(findNamed(&screen.view, QStringLiteral("In progress")));
        QTRY_VERIFY(!env.dependencies().installProgress().isEmpty());
        QVERIFY(screen.shows(env.dependencies().installProgress()));
    }

    void paste()
    {
        Environment env;
        Screen screen(env);
        screen.link()->setText(QStringLiteral("old"));
        QGuiApplication::clipboard()->clear();
        QTest::mouseClick(screen.button(QStringLiteral("Paste")), Qt::LeftButton);
        QCOMPARE(screen.view.inputUrl(), QStringLiteral("old"));

        QGuiApplication::clipboard()->setText(QStringLiteral(" \n https://youtu.be/abc \n"));
        QTest::mouseClick(screen.button(QStringLiteral("Paste")), Qt::LeftButton);
        QCOMPARE(screen.view.inputUrl(), QStringLiteral("https://youtu.be/abc"));
    }

    // A switch between light and dark recolours the screen and keeps the typed link.
    void appearanceSwitch()
    {
        Environment env;
        Screen screen(env);
        screen.link()->setText(QStringLiteral("https://youtu.be/x"));
        const QPalette light = QApplication::palette();
        const QPalette dark = Theme::palette(Theme::Scheme::dark);
        QApplication::setPalette(dark);
        auto captionColor = [&screen] {
            const auto labels = screen.view.findChildren<QLabel*>();
            for (QLabel* label : labels) {
                if (label->text() == u"YOUTUBE VIDEO LINK")
                    return label->palette().color(QPalette::WindowText);
            }
            return QColor();
        };
        QTRY_COMPARE(captionColor(), Theme::secondaryText(dark));
        QCOMPARE(screen.view.inputUrl(), QStringLiteral("https://youtu.be/x"));
        QVERIFY(screen.start()->isEnabled());
        QApplication::setPalette(light);
    }

    // The chosen folder shows at once and is saved before any rip starts; a cancelled
    // chooser changes nothing.
    void chooseFolder()
    {
        Environment env;
        Screen screen(env);
        const QUrl before = env.engine().targetFolder();
        const QString chosen = env.path() + QStringLiteral("/My Music");
        QDir().mkpath(chosen);

        QTimer::singleShot(0, this, [] {
            auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            QVERIFY(dialog);
            QCOMPARE(dialog->windowTitle(), QStringLiteral("Select Download Folder"));
            dialog->reject();
        });
        QTest::mouseClick(screen.button(QStringLiteral("Choose...")), Qt::LeftButton);
        QCOMPARE(env.engine().targetFolder(), before);
        QVERIFY(!env.savedSettings()->contains(QStringLiteral("targetFolder")));

        QTimer::singleShot(0, this, [chosen] {
            auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            QVERIFY(dialog);
            dialog->setDirectory(chosen);
            dialog->selectFile(chosen);
            QMetaObject::invokeMethod(dialog, "accept");
        });
        QTest::mouseClick(screen.button(QStringLiteral("Choose...")), Qt::LeftButton);
        QCOMPARE(env.engine().targetFolder().toLocalFile(), chosen);
        QCOMPARE(screen.view.findChild<ElidedLabel*>()->text(), chosen);
        QCOMPARE(QUrl(env.savedSettings()->value(QStringLiteral("targetFolder")).toString())
                     .toLocalFile(),
                 chosen);
    }
};

QTEST_MAIN(TestConverterView)
#include "tst_converterview.moc"
