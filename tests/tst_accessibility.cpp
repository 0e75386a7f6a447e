#include "support/ScreenFixture.h"
#include "views/converter/ConverterView.h"
#include "views/settings/SettingsView.h"
#include "views/shell/ContentView.h"
#include "views/shell/ScreenFactory.h"
#include "views/shell/Sidebar.h"

#include <QAccessible>
#include <QAccessibleActionInterface>
#include <QClipboard>
#include <QGuiApplication>
#include <QSignalSpy>
#include <QTest>

using namespace ScreenFixture;

using namespace Qt::StringLiterals;

namespace {

const QString kArtwork = u"Always embed YouTube thumbnail as album cover artwork"_s;
const QString kTags = u"Always embed ID3 audio tags (Title, Artist, Channel, Album)"_s;

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
        QVERIFY2(nodes.contains(name), qPrintable(u"not reachable: "_s + name));
}

} // namespace

class TestAccessibility : public QObject
{
    Q_OBJECT

private slots:
    void converterControls()
    {
        Environment env(Tools::none);
        QVERIFY(env.checkTools());
        ConverterView view(env.services(), &env.desktop);
        view.resize(880, 900);
        view.show();

        expectControls(&view,
                       {u"Checking Tools"_s, u"Install Automatically"_s, u"YouTube Video Link"_s,
                        u"Paste"_s, u"Choose..."_s, u"Open Folder"_s, u"Audio Format"_s,
                        u"Audio Quality"_s, u"Embed Album Artwork"_s, u"Embed ID3 Tags"_s,
                        u"Rip Audio (MP3 \u2022 320 kbps)"_s});
        QAccessibleInterface* field = reachable(&view).value(u"YouTube Video Link"_s);
        QCOMPARE(field->role(), QAccessible::EditableText);

        // Type through the accessible value, then clear, paste and toggle by their actions.
        field->setText(QAccessible::Value, u"  abc  "_s);
        QCOMPARE(view.inputUrl(), u"  abc  "_s);
        QVERIFY(press(&view, u"Clear"_s));
        QTRY_COMPARE(view.inputUrl(), QString());
        // Paste trims what it takes; an empty clipboard leaves the field alone.
        field->setText(QAccessible::Value, u"old"_s);
        QGuiApplication::clipboard()->clear();
        QVERIFY(press(&view, u"Paste"_s));
        QTest::qWait(300); // past the button's delayed click
        QCOMPARE(view.inputUrl(), u"old"_s);
        QGuiApplication::clipboard()->setText(u"  https://youtu.be/x  "_s);
        QVERIFY(press(&view, u"Paste"_s));
        QTRY_COMPARE(view.inputUrl(), u"https://youtu.be/x"_s);
        QVERIFY(press(&view, u"Embed Album Artwork"_s));
        QTRY_VERIFY(!env.engine().embedArtwork());

        // Without tools the engine refuses; the failure card's buttons are reachable.
        QVERIFY(press(&view, u"Rip Audio (MP3 \u2022 320 kbps)"_s));
        QTRY_COMPARE(env.engine().currentStatus().kind(), DownloadStatus::Kind::failed);
        expectControls(&view, {u"Dismiss"_s, u"New Rip"_s});
        QVERIFY(press(&view, u"Dismiss"_s));
        QTRY_COMPARE(env.engine().currentStatus(), DownloadStatus::idle());

        env.engine().setCurrentStatus(
            DownloadStatus::downloading(0.5, u"1MiB/s"_s, u"00:01"_s, u"2MiB"_s));
        expectControls(&view,
                       {u"Cancel Download"_s, u"Extracting Audio..."_s, u"Download progress"_s});

        const QString file = env.path() + u"/Song.wav"_s;
        QVERIFY(writeSilentWav(file));
        HistoryTrack track;
        track.id = QUuid::createUuid();
        track.filePath = file;
        env.history().addTrack(track);
        env.engine().setCurrentStatus(DownloadStatus::completed(file));
        expectControls(&view, {u"Play"_s, u"Show in Folder"_s, u"New Rip"_s});
        QVERIFY(press(&view, u"Show in Folder"_s));
        QTRY_COMPARE(env.desktop.revealed, QStringList{file});
        QVERIFY(press(&view, u"New Rip"_s));
        QTRY_COMPARE(view.inputUrl(), QString());
    }

    // The sidebar reads as page tabs; each tab's every action (press, toggle) shows its screen.
    void sidebarTabs()
    {
        Environment env(Tools::none);
        ScreenFactory factory(env.services());
        ContentView view(env.services(), factory);
        view.show();
        QCOMPARE(QAccessible::queryAccessibleInterface(view.sidebar())->role(),
                 QAccessible::PageTabList);
        const QList<std::pair<NavigationItem, QString>> screens = {
            {NavigationItem::batch, u"YouTube links, one per line"_s},
            {NavigationItem::history, u"Search tracks"_s},
            {NavigationItem::settings, u"Check Dependencies"_s},
            {NavigationItem::convert, u"YouTube Video Link"_s},
        };
        for (const QString& action :
             {QAccessibleActionInterface::pressAction(), QAccessibleActionInterface::toggleAction()}) {
            for (const auto& [item, control] : screens) {
                QAccessibleInterface* tab =
                    QAccessible::queryAccessibleInterface(view.sidebar()->row(item));
                QCOMPARE(tab->role(), QAccessible::PageTab);
                QCOMPARE(tab->actionInterface()->actionNames(),
                         QStringList({QAccessibleActionInterface::pressAction(),
                                      QAccessibleActionInterface::toggleAction(),
                                      QAccessibleActionInterface::setFocusAction()}));
                tab->actionInterface()->doAction(action);
                QTRY_VERIFY2(reachable(&view).contains(control),
                             qPrintable(action + u" did not show "_s + control));
                QVERIFY(tab->state().selected);
            }
        }
    }

    void settingsControls()
    {
        Environment env(Tools::ytDlpOnly);
        env.pointInstallerAtSilentServer();
        QVERIFY(env.checkTools());
        SettingsView view(env.services());
        view.resize(880, 1000);
        view.show();

        expectControls(&view, {u"Change..."_s, u"Default Format"_s, u"Default Bitrate"_s, kArtwork,
                               kTags, u"Check Dependencies"_s, u"yt-dlp"_s, u"ffmpeg"_s,
                               u"Download & Install Missing Tools Automatically"_s});
        QCOMPARE(reachable(&view).value(u"ffmpeg"_s)->text(QAccessible::Description),
                 u"ffmpeg: missing, Not found in standard paths"_s);

        QVERIFY(press(&view, kTags));
        QTRY_COMPARE(env.savedSettings()->value(u"embedMetadata"_s).toBool(), false);

        QSignalSpy checked(&env.dependencies(), &DependencyManager::checkFinished);
        QVERIFY(press(&view, u"Check Dependencies"_s));
        QTRY_VERIFY_WITH_TIMEOUT(!checked.isEmpty(), 20000);

        // The install row turns into its spinner and the installer's step text.
        QVERIFY(press(&view, u"Download & Install Missing Tools Automatically"_s));
        QTRY_VERIFY(env.dependencies().isInstalling());
        expectControls(&view, {u"In progress"_s});
        QTRY_VERIFY(!env.dependencies().installProgress().isEmpty());
        QVERIFY(visibleTexts(&view).contains(env.dependencies().installProgress()));
    }
};

QTEST_MAIN(TestAccessibility)
#include "tst_accessibility.moc"
