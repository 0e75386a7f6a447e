#include "support/ScreenFixture.h"
#include "views/ConverterView.h"
#include "views/SettingsView.h"

#include <QAccessible>
#include <QAccessibleActionInterface>
#include <QClipboard>
#include <QGuiApplication>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTest>

using namespace ScreenFixture;

namespace {

// Every node a screen reader can reach from root, by name; hidden nodes are left out.
QHash<QString, QAccessibleInterface*> reachable(QWidget* root)
{
    QHash<QString, QAccessibleInterface*> nodes;
    QList<QAccessibleInterface*> pending{QAccessible::queryAccessibleInterface(root)};
    while (!pending.isEmpty()) {
        QAccessibleInterface* node = pending.takeFirst();
        if (!node || node->state().invisible)
            continue;
        const QString name = node->text(QAccessible::Name);
        // A control wins over a caption of the same words.
        if (!name.isEmpty() &&
            (!nodes.contains(name) || nodes.value(name)->role() == QAccessible::StaticText))
            nodes.insert(name, node);
        for (int i = 0; i < node->childCount(); ++i)
            pending << node->child(i);
    }
    return nodes;
}

// Presses a control the way a screen reader does: through its action interface. A button
// clicks a moment later, as after a mouse press, so callers wait for the effect.
bool press(QWidget* root, const QString& name)
{
    QAccessibleInterface* node = reachable(root).value(name);
    if (!node || !node->actionInterface())
        return false;
    QAccessibleActionInterface* actions = node->actionInterface();
    const QStringList names = actions->actionNames();
    for (const QString& action :
         {QAccessibleActionInterface::pressAction(), QAccessibleActionInterface::toggleAction()}) {
        if (names.contains(action)) {
            actions->doAction(action);
            return true;
        }
    }
    return false;
}

void expectControls(QWidget* root, const QStringList& names)
{
    const auto nodes = reachable(root);
    for (const QString& name : names)
        QVERIFY2(nodes.contains(name), qPrintable(QStringLiteral("not reachable: ") + name));
}

} // namespace

class TestAccessibility : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }

    void converterControls()
    {
        Environment env(Tools::none);
        QVERIFY(env.checkTools());
        ConverterView view(env.services(), &env.desktop);
        view.resize(880, 900);
        view.show();

        expectControls(&view,
                       {QStringLiteral("Checking Tools"), QStringLiteral("Install Automatically"),
                        QStringLiteral("YouTube Video Link"), QStringLiteral("Paste"),
                        QStringLiteral("Choose..."), QStringLiteral("Open Folder"),
                        QStringLiteral("Audio Format"), QStringLiteral("Audio Quality"),
                        QStringLiteral("Embed Album Artwork"), QStringLiteral("Embed ID3 Tags"),
                        QStringLiteral("Rip Audio (MP3 \u2022 320 kbps)")});
        QAccessibleInterface* field = reachable(&view).value(QStringLiteral("YouTube Video Link"));
        QCOMPARE(field->role(), QAccessible::EditableText);

        // Type through the accessible value, then clear, paste and toggle by their actions.
        field->setText(QAccessible::Value, QStringLiteral("  abc  "));
        QCOMPARE(view.inputUrl(), QStringLiteral("  abc  "));
        QVERIFY(press(&view, QStringLiteral("Clear")));
        QTRY_COMPARE(view.inputUrl(), QString());
        QGuiApplication::clipboard()->setText(QStringLiteral("  https://youtu.be/x  "));
        QVERIFY(press(&view, QStringLiteral("Paste")));
        QTRY_COMPARE(view.inputUrl(), QStringLiteral("https://youtu.be/x"));
        QVERIFY(press(&view, QStringLiteral("Embed Album Artwork")));
        QTRY_VERIFY(!env.engine().embedArtwork());
        QVERIFY(press(&view, QStringLiteral("Open Folder")));
        QTRY_COMPARE(env.desktop.opened.size(), 1);

        // Without tools the engine refuses; the failure card's buttons are reachable.
        QVERIFY(press(&view, QStringLiteral("Rip Audio (MP3 \u2022 320 kbps)")));
        QTRY_COMPARE(env.engine().currentStatus().kind(), DownloadStatus::Kind::failed);
        expectControls(&view, {QStringLiteral("Dismiss"), QStringLiteral("New Rip")});
        QVERIFY(press(&view, QStringLiteral("Dismiss")));
        QTRY_COMPARE(env.engine().currentStatus(), DownloadStatus::idle());

        env.engine().setCurrentStatus(DownloadStatus::downloading(
            0.5, QStringLiteral("1MiB/s"), QStringLiteral("00:01"), QStringLiteral("2MiB")));
        expectControls(&view,
                       {QStringLiteral("Cancel Download"), QStringLiteral("Extracting Audio..."),
                        QStringLiteral("Download progress")});

        const QString file = env.path() + QStringLiteral("/Song.wav");
        QVERIFY(writeSilentWav(file));
        HistoryTrack track;
        track.id = QUuid::createUuid();
        track.filePath = file;
        env.history().addTrack(track);
        env.engine().setCurrentStatus(DownloadStatus::completed(file));
        expectControls(&view, {QStringLiteral("Play"), QStringLiteral("Show in Folder"),
                               QStringLiteral("New Rip")});
        QVERIFY(press(&view, QStringLiteral("Show in Folder")));
        QTRY_COMPARE(env.desktop.revealed, QStringList{file});
        QVERIFY(press(&view, QStringLiteral("New Rip")));
        QTRY_COMPARE(view.inputUrl(), QString());

        QVERIFY(press(&view, QStringLiteral("Install Automatically")));
        QTRY_VERIFY(env.dependencies().isInstalling());
        expectControls(&view, {QStringLiteral("In progress")});
    }

    void settingsControls()
    {
        Environment env(Tools::ytDlpOnly);
        env.pointInstallerAtSilentServer();
        QVERIFY(env.checkTools());
        SettingsView view(env.services());
        view.resize(880, 1000);
        view.show();

        expectControls(&view, {QStringLiteral("Change..."), QStringLiteral("Default Format"),
                               QStringLiteral("Default Bitrate"),
                               QStringLiteral("Always embed YouTube thumbnail as album cover "
                                              "artwork"),
                               QStringLiteral("Always embed ID3 audio tags (Title, Artist, "
                                              "Channel, Album)"),
                               QStringLiteral("Check Dependencies"), QStringLiteral("yt-dlp"),
                               QStringLiteral("ffmpeg"),
                               QStringLiteral("Download & Install Missing Tools Automatically")});
        QCOMPARE(reachable(&view).value(QStringLiteral("ffmpeg"))->text(QAccessible::Description),
                 QStringLiteral("ffmpeg: missing, Not found in standard paths"));

        QVERIFY(press(&view, QStringLiteral("Always embed ID3 audio tags (Title, Artist, Channel, "
                                            "Album)")));
        QTRY_COMPARE(env.savedSettings()->value(QStringLiteral("embedMetadata")).toBool(), false);

        QSignalSpy checked(&env.dependencies(), &DependencyManager::checkFinished);
        QVERIFY(press(&view, QStringLiteral("Check Dependencies")));
        QTRY_VERIFY_WITH_TIMEOUT(!checked.isEmpty(), 20000);

        QVERIFY(press(&view, QStringLiteral("Download & Install Missing Tools Automatically")));
        QTRY_VERIFY(env.dependencies().isInstalling());
        expectControls(&view, {QStringLiteral("In progress")});
    }
};

QTEST_MAIN(TestAccessibility)
#include "tst_accessibility.moc"
