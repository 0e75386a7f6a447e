#include "support/ScreenFixture.h"
#include "support/TestSupport.h"
#include "views/DesktopTexts.h"
#include "views/ElidedLabel.h"
#include "views/SettingsView.h"
#include "views/ToolStatusRow.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTest>
#include <QTimer>

using namespace ScreenFixture;

namespace {

struct Screen
{
    explicit Screen(Environment& env)
        : view(env.services())
    {
        view.resize(880, 900);
        view.show();
    }
    QComboBox* picker(const QString& name) { return findNamed<QComboBox>(&view, name); }
    QCheckBox* box(const QString& text) { return findNamed<QCheckBox>(&view, text); }
    QAbstractButton* button(const QString& name) { return findNamed<QAbstractButton>(&view, name); }
    ToolStatusRow* tool(const QString& name) { return findNamed<ToolStatusRow>(&view, name); }
    bool shows(const QString& text) { return visibleTexts(&view).contains(text); }

    SettingsView view;
};

const QString kArtwork = QStringLiteral("Always embed YouTube thumbnail as album cover artwork");
const QString kTags = QStringLiteral("Always embed ID3 audio tags (Title, Artist, Channel, Album)");
const QString kInstall = QStringLiteral("Download & Install Missing Tools Automatically");

void choose(QComboBox* picker, const QString& raw)
{
    const int index = picker->findData(raw);
    QVERIFY(index >= 0);
    picker->setCurrentIndex(index);
    emit picker->activated(index);
}

} // namespace

class TestSettingsView : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }

    // Every change is written at once and comes back after a restart.
    void changesSurviveRestart()
    {
        QTemporaryDir dir;
        const QString folder = dir.path() + QStringLiteral("/A very long folder name/Music");
        QDir().mkpath(folder);
        {
            Environment env(Tools::none, false, dir.path());
            Screen screen(env);
            QCOMPARE(screen.picker(QStringLiteral("Default Format"))->currentText(),
                     QStringLiteral("MP3 (.mp3)"));
            QCOMPARE(screen.picker(QStringLiteral("Default Bitrate"))->currentText(),
                     QStringLiteral("320 kbps (Extreme Quality)"));
            QVERIFY(screen.box(kArtwork)->isChecked());

            choose(screen.picker(QStringLiteral("Default Bitrate")), QStringLiteral("0"));
            QCOMPARE(env.savedSettings()->value(QStringLiteral("defaultQuality")).toString(),
                     QStringLiteral("0"));
            choose(screen.picker(QStringLiteral("Default Format")), QStringLiteral("opus"));
            QCOMPARE(env.savedSettings()->value(QStringLiteral("defaultFormat")).toString(),
                     QStringLiteral("opus"));
            QTest::mouseClick(screen.box(kArtwork), Qt::LeftButton, {}, QPoint(5, 5));
            QCOMPARE(env.savedSettings()->value(QStringLiteral("embedArtwork")).toBool(), false);

            QTimer::singleShot(0, this, [folder] {
                auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
                QVERIFY(dialog);
                dialog->setDirectory(folder);
                dialog->selectFile(folder);
                QMetaObject::invokeMethod(dialog, "accept");
            });
            QTest::mouseClick(screen.button(QStringLiteral("Change...")), Qt::LeftButton);
            QCOMPARE(screen.view.findChild<ElidedLabel*>()->text(), folder);

            // A narrow row keeps the start of the path and its last folder.
            auto* path = screen.view.findChild<ElidedLabel*>();
            path->resize(path->fontMetrics().horizontalAdvance(folder) / 2, path->height());
            QVERIFY(path->displayedText().contains(QStringLiteral("…")));
            QVERIFY(path->displayedText().endsWith(QStringLiteral("/Music")));
        }
        Environment restarted(Tools::none, false, dir.path());
        Screen screen(restarted);
        QCOMPARE(screen.picker(QStringLiteral("Default Format"))->currentText(),
                 QStringLiteral("Opus (.opus)"));
        QCOMPARE(screen.picker(QStringLiteral("Default Bitrate"))->currentText(),
                 QStringLiteral("Best Available (Original)"));
        QVERIFY(!screen.box(kArtwork)->isChecked());
        QVERIFY(screen.box(kTags)->isChecked());
        QCOMPARE(screen.view.findChild<ElidedLabel*>()->text(), folder);
    }

    void bitrateFollowsFormat()
    {
        Environment env;
        env.engine().setSelectedQuality(AudioQuality::k192);
        Screen screen(env);
        QComboBox* format = screen.picker(QStringLiteral("Default Format"));
        QStringList entries;
        for (int i = 0; i < format->count(); ++i)
            entries << format->itemText(i);
        QCOMPARE(entries,
                 (QStringList{QStringLiteral("MP3 (.mp3)"), QStringLiteral("M4A / AAC (.m4a)"),
                              QStringLiteral("FLAC Lossless (.flac)"),
                              QStringLiteral("WAV Uncompressed (.wav)"),
                              QStringLiteral("Opus (.opus)")}));
        for (const char* raw : {"flac", "wav", "m4a", "opus", "mp3"}) {
            choose(format, QString::fromLatin1(raw));
            const bool bitrate =
                AudioFormat::fromRawValue(QString::fromLatin1(raw))->supportsBitrate();
            QCOMPARE(screen.picker(QStringLiteral("Default Bitrate")) != nullptr, bitrate);
            QCOMPARE(screen.shows(QStringLiteral("Default Bitrate")), bitrate);
        }
        QCOMPARE(screen.picker(QStringLiteral("Default Bitrate"))->currentText(),
                 QStringLiteral("192 kbps (Standard)"));
    }

    void toolRows_data()
    {
        QTest::addColumn<int>("tools");
        QTest::addColumn<bool>("installShown");
        QTest::newRow("none") << int(Tools::none) << true;
        QTest::newRow("yt-dlp only") << int(Tools::ytDlpOnly) << true;
        QTest::newRow("both") << int(Tools::both) << false;
    }
    void toolRows()
    {
        QFETCH(int, tools);
        QFETCH(bool, installShown);
        Environment env(static_cast<Tools>(tools));
        QVERIFY(env.checkTools());
        Screen screen(env);

        ToolStatusRow* ytDlp = screen.tool(QStringLiteral("yt-dlp"));
        ToolStatusRow* ffmpeg = screen.tool(QStringLiteral("ffmpeg"));
        const bool hasYtDlp = static_cast<Tools>(tools) != Tools::none;
        const bool hasFfmpeg = static_cast<Tools>(tools) == Tools::both;
        const QString missing = QStringLiteral("Not found in standard paths");
        QCOMPARE(ytDlp->sealSymbol(), hasYtDlp ? QStringLiteral("checkmark.seal.fill")
                                               : QStringLiteral("xmark.seal.fill"));
        QCOMPARE(ytDlp->badgeText(), hasYtDlp ? QStringLiteral("v2023.03.04") : QString());
        QCOMPARE(ytDlp->pathText(),
                 hasYtDlp ? env.path() + QStringLiteral("/tools/yt-dlp") : missing);
        QCOMPARE(ffmpeg->sealSymbol(), hasFfmpeg ? QStringLiteral("checkmark.seal.fill")
                                                 : QStringLiteral("xmark.seal.fill"));
        QCOMPARE(ffmpeg->badgeText(), hasFfmpeg ? QStringLiteral("v5.1.6-0+deb12u1") : QString());
        QCOMPARE(ffmpeg->pathText(),
                 hasFfmpeg ? env.path() + QStringLiteral("/tools/ffmpeg") : missing);
        QCOMPARE(screen.button(kInstall) != nullptr, installShown);
    }

    // The rows follow each new check: a tool that appears turns the row green.
    void checkDependenciesRefreshes()
    {
        Environment env(Tools::ytDlpOnly);
        QVERIFY(env.checkTools());
        Screen screen(env);
        QCOMPARE(screen.tool(QStringLiteral("ffmpeg"))->sealSymbol(),
                 QStringLiteral("xmark.seal.fill"));
        TestSupport::writeScript(env.path() + QStringLiteral("/tools/ffmpeg"),
                                 "echo 'ffmpeg version 6.0 Copyright'\n");
        QSignalSpy finished(&env.dependencies(), &DependencyManager::checkFinished);
        QTest::mouseClick(screen.button(QStringLiteral("Check Dependencies")), Qt::LeftButton);
        QVERIFY(finished.wait(20000));
        QCOMPARE(screen.tool(QStringLiteral("ffmpeg"))->sealSymbol(),
                 QStringLiteral("checkmark.seal.fill"));
        QCOMPARE(screen.tool(QStringLiteral("ffmpeg"))->badgeText(), QStringLiteral("v6.0"));
        QVERIFY(!screen.button(kInstall));

        // A found tool whose version cannot be read still shows its badge, reading just "v".
        TestSupport::writeScript(env.path() + QStringLiteral("/tools/ffmpeg"), "exit 0\n");
        QTest::mouseClick(screen.button(QStringLiteral("Check Dependencies")), Qt::LeftButton);
        QVERIFY(finished.wait(20000));
        if (env.dependencies().ffmpegVersion())
            QCOMPARE(screen.tool(QStringLiteral("ffmpeg"))->badgeText(), QStringLiteral("v"));
    }

    void installRow()
    {
        Environment env(Tools::none);
        env.pointInstallerAtSilentServer();
        QVERIFY(env.checkTools());
        Screen screen(env);
        QTest::mouseClick(screen.button(kInstall), Qt::LeftButton);
        QVERIFY(env.dependencies().isInstalling());
        QVERIFY(!screen.button(kInstall));
        QVERIFY(findNamed(&screen.view, QStringLiteral("In progress")));
        QTRY_VERIFY(!env.dependencies().installProgress().isEmpty());
        QVERIFY(screen.shows(env.dependencies().installProgress()));
    }

    void aboutCard()
    {
        Environment env;
        Screen screen(env);
        const QStringList texts = visibleTexts(&screen.view);
        QVERIFY(texts.contains(QStringLiteral("Preferences")));
        QVERIFY(texts.contains(DesktopTexts::aboutTitle()));
        QVERIFY(!DesktopTexts::aboutTitle().contains(QStringLiteral("macOS")));
        QVERIFY(std::any_of(texts.begin(), texts.end(), [](const QString& text) {
            return text.startsWith(QStringLiteral("Version 1.0.0 ("));
        }));
    }
};

QTEST_MAIN(TestSettingsView)
#include "tst_settingsview.moc"
