// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/ScreenFixture.h"
#include "support/TestSupport.h"
#include "views/components/ElidedLabel.h"
#include "views/settings/SettingsView.h"
#include "views/settings/ToolStatusRow.h"

#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

using namespace ScreenFixture;

namespace {

struct Screen
{
    explicit Screen(Environment& env)
        : view(env.engine(), env.services().dependencies, env.services().updater, env.player(),
               &env.following())
    {
        view.resize(880, 900);
        view.show();
    }
    QComboBox* picker(const QString& name) { return findNamed<QComboBox>(&view, name); }
    QCheckBox* box(const QString& text) { return findNamed<QCheckBox>(&view, text); }
    QAbstractButton* button(const QString& name) { return findNamed<QAbstractButton>(&view, name); }
    ToolStatusRow* tool(const QString& name) { return findNamed<ToolStatusRow>(&view, name); }
    bool shows(const QString& text) { return reachable(&view).contains(text); }

    SettingsView view;
};

const QString kArtwork = u"Always embed YouTube thumbnail as album cover artwork"_s;
const QString kTags = u"Always embed ID3 audio tags (Title, Artist, Channel, Album)"_s;
const QString kInstall = u"Download & Install Missing Tools Automatically"_s;

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
    // Every change is written at once and comes back after a restart.
    void changesSurviveRestart()
    {
        QTemporaryDir dir;
        const QString folder = dir.path() + u"/A very long folder name/Music"_s;
        QDir().mkpath(folder);
        {
            Environment env(Tools::none, false, dir.path());
            Screen screen(env);
            choose(screen.picker(u"Default Bitrate"_s), u"0"_s);
            QCOMPARE(env.savedSettings()->value(u"defaultQuality"_s).toString(), u"0"_s);
            choose(screen.picker(u"Default Format"_s), u"opus"_s);
            QCOMPARE(env.savedSettings()->value(u"defaultFormat"_s).toString(), u"opus"_s);
            QVERIFY(press(&screen.view, kArtwork));
            QTRY_COMPARE(env.savedSettings()->value(u"embedArtwork"_s).toBool(), false);
            QVERIFY(press(&screen.view, u"Square cover art"_s));
            QTRY_COMPARE(env.savedSettings()->value(u"squareCover"_s).toBool(), false);

            // A proxy yt-dlp cannot use is refused with a line and not saved.
            auto* proxy = findNamed<QLineEdit>(&screen.view, u"Proxy"_s);
            for (const QString& text : {u"ftp://127.0.0.1:21"_s, u"socks5://127.0.0.1:1080"_s}) {
                proxy->setText(text);
                emit proxy->editingFinished();
                const bool usable = text.startsWith(u"socks5"_s);
                QCOMPARE(screen.shows(u"Not saved: a proxy is an http, https, socks4, socks4a, "
                                      "socks5 or socks5h link, such as socks5://127.0.0.1:1080."_s),
                         !usable);
                QCOMPARE(env.savedSettings()->value(u"proxy"_s).toString(),
                         usable ? text : QString());
            }
            findNamed<QSpinBox>(&screen.view, u"Download speed limit"_s)->setValue(500);
            QCOMPARE(env.savedSettings()->value(u"speedLimitKBps"_s).toInt(), 500);

            QTimer::singleShot(0, this, [folder] {
                auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
                QVERIFY(dialog);
                dialog->setDirectory(folder);
                dialog->selectFile(folder);
                QMetaObject::invokeMethod(dialog, "accept");
            });
            QTest::mouseClick(screen.button(u"Change..."_s), Qt::LeftButton);
        }
        Environment restarted(Tools::none, false, dir.path());
        Screen screen(restarted);
        QCOMPARE(screen.picker(u"Default Format"_s)->currentText(), u"Opus (.opus)"_s);
        QCOMPARE(screen.picker(u"Default Bitrate"_s)->currentText(),
                 u"Best Available (Original)"_s);
        QVERIFY(!screen.box(kArtwork)->isChecked());
        QVERIFY(screen.box(kTags)->isChecked());
        QVERIFY(!screen.box(u"Square cover art"_s)->isChecked());
        QVERIFY(screen.box(u"Read artist from titles"_s)->isChecked());
        QCOMPARE(screen.view.findChild<ElidedLabel*>()->text(), folder);
        QCOMPARE(findNamed<QLineEdit>(&screen.view, u"Proxy"_s)->text(),
                 u"socks5://127.0.0.1:1080"_s);
        QCOMPARE(findNamed<QSpinBox>(&screen.view, u"Download speed limit"_s)->value(), 500);
    }

    void bitrateFollowsFormat()
    {
        Environment env;
        env.engine().setSelectedQuality(AudioQuality::k192);
        Screen screen(env);
        QComboBox* format = screen.picker(u"Default Format"_s);
        for (const QString& raw : {u"flac"_s, u"wav"_s, u"m4a"_s, u"opus"_s, u"mp3"_s}) {
            choose(format, raw);
            QCOMPARE(screen.picker(u"Default Bitrate"_s) != nullptr,
                     AudioFormat::fromRawValue(raw)->supportsBitrate());
        }
        QCOMPARE(screen.picker(u"Default Bitrate"_s)->currentText(), u"192 kbps (Standard)"_s);
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

        ToolStatusRow* ytDlp = screen.tool(u"yt-dlp"_s);
        ToolStatusRow* ffmpeg = screen.tool(u"ffmpeg"_s);
        const bool hasYtDlp = static_cast<Tools>(tools) != Tools::none;
        const bool hasFfmpeg = static_cast<Tools>(tools) == Tools::both;
        const QString missing = u"Not found in standard paths"_s;
        QCOMPARE(ytDlp->badgeText(), hasYtDlp ? u"v2023.03.04"_s : QString());
        QCOMPARE(ytDlp->pathText(), hasYtDlp ? env.path() + u"/tools/yt-dlp"_s : missing);
        QCOMPARE(ffmpeg->sealSymbol(), hasFfmpeg ? u"checkmark.seal.fill"_s : u"xmark.seal.fill"_s);
        QCOMPARE(screen.button(kInstall) != nullptr, installShown);
        QCOMPARE(reachable(&screen.view).value(u"ffmpeg"_s)->text(QAccessible::Description),
                 hasFfmpeg ? u"ffmpeg: found, version 5.1.6-0+deb12u1, "_s + ffmpeg->pathText() +
                                 u", Shipped with Veldtone"_s
                           : u"ffmpeg: missing, Not found in standard paths"_s);
    }

    // Choosing the other channel offers the switch at once, and is kept.
    void releaseChannel()
    {
        Environment env(Tools::ytDlpOnly);
        QVERIFY(env.checkTools());
        Screen screen(env);
        QVERIFY(!screen.button(u"Switch to Nightly"_s));
        choose(screen.picker(u"yt-dlp updates"_s), u"nightly"_s);
        QVERIFY(screen.button(u"Switch to Nightly"_s));
        QCOMPARE(env.savedSettings()->value(u"ytDlpChannel"_s), QVariant(u"nightly"_s));
        choose(screen.picker(u"yt-dlp updates"_s), u"stable"_s);
        QVERIFY(!screen.button(u"Switch to Nightly"_s));
    }

    // The rows follow each new check: a tool that appears turns the row green.
    void checkDependenciesRefreshes()
    {
        Environment env(Tools::ytDlpOnly);
        QVERIFY(env.checkTools());
        Screen screen(env);
        TestSupport::writeScript(env.path() + u"/tools/ffmpeg"_s,
                                 "echo 'ffmpeg version 6.0 Copyright'\n");
        QSignalSpy finished(&env.dependencies(), &DependencyManager::checkFinished);
        QVERIFY(press(&screen.view, u"Check Dependencies"_s));
        QVERIFY(finished.wait(20000));
        QCOMPARE(screen.tool(u"ffmpeg"_s)->sealSymbol(), u"checkmark.seal.fill"_s);
        QCOMPARE(screen.tool(u"ffmpeg"_s)->badgeText(), u"v6.0"_s);
    }
};

QTEST_MAIN(TestSettingsView)
#include "tst_settingsview.moc"
