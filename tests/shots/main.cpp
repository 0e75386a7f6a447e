// Renders the main window on each destination and in each state worth looking at, with real
// services working in a temporary home, and saves one PNG per view.
//
// Usage: veldtone-shots OUTPUT_FOLDER [light|dark]

#include "services/AudioPlayerService.h"
#include "services/DependencyManager.h"
#include "services/DownloadEngine.h"
#include "services/HistoryStore.h"
#include "support/TestSupport.h"
#include "views/ContentView.h"
#include "views/MainWindow.h"
#include "views/ScreenFactory.h"
#include "views/components/GlassCard.h"
#include "views/components/GradientButton.h"
#include "views/components/Theme.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QHBoxLayout>
#include <QIcon>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QSettings>
#include <QStandardPaths>
#include <QStyleFactory>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QTextStream>
#include <QUrl>
#include <QtEndian>

namespace {

QByteArray silentWav(int seconds)
{
    const quint32 rate = 8000;
    const quint32 dataBytes = rate * 2 * static_cast<quint32>(seconds);
    QByteArray wav("RIFF");
    auto put32 = [&wav](quint32 v) {
        const quint32 le = qToLittleEndian(v);
        wav.append(reinterpret_cast<const char*>(&le), 4);
    };
    auto put16 = [&wav](quint16 v) {
        const quint16 le = qToLittleEndian(v);
        wav.append(reinterpret_cast<const char*>(&le), 2);
    };
    put32(36 + dataBytes);
    wav.append("WAVEfmt ");
    put32(16);
    put16(1);
    put16(1);
    put32(rate);
    put32(rate * 2);
    put16(2);
    put16(16);
    wav.append("data");
    put32(dataBytes);
    wav.append(QByteArray(static_cast<int>(dataBytes), '\0'));
    return wav;
}

// A small sunset-coloured cover image.
QString writeCover(const QString& path)
{
    QImage image(240, 240, QImage::Format_RGB32);
    QPainter painter(&image);
    QLinearGradient sky(0, 0, 0, 240);
    sky.setColorAt(0, QColor(0x3A, 0x1C, 0x71));
    sky.setColorAt(0.6, QColor(0xD7, 0x6D, 0x77));
    sky.setColorAt(1, QColor(0xFF, 0xAF, 0x7B));
    painter.fillRect(image.rect(), sky);
    painter.setBrush(QColor(0xFF, 0xE0, 0x8A));
    painter.setPen(Qt::NoPen);
    painter.drawEllipse(QPointF(120, 150), 50, 50);
    painter.end();
    image.save(path);
    return QUrl::fromLocalFile(path).toString();
}

void settle(int ms = 150)
{
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < ms)
        QApplication::processEvents(QEventLoop::AllEvents, 20);
}

// The tool check starts once events run; the shots show its outcome, not "Checking".
void settleCheck(const DependencyManager& tools)
{
    QElapsedTimer timer;
    timer.start();
    while (tools.isChecking() && timer.elapsed() < 30000)
        settle(50);
}

} // namespace

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    const QStringList args = QApplication::arguments();
    if (args.size() < 2) {
        QTextStream(stderr) << "usage: veldtone-shots OUTPUT_FOLDER [light|dark]\n";
        return 2;
    }
    const QString out = args.at(1);
    const bool dark = args.size() > 2 && args.at(2) == u"dark";
    const QString scheme = dark ? QStringLiteral("dark") : QStringLiteral("light");
    QDir().mkpath(out);
    QStandardPaths::setTestModeEnabled(true);
    if (QStyle* fusion = QStyleFactory::create(QStringLiteral("Fusion")))
        QApplication::setStyle(fusion);
    QApplication::setPalette(Theme::palette(dark ? Theme::Scheme::dark : Theme::Scheme::light));

    QTemporaryDir home;
    const QString music = home.filePath(QStringLiteral("Music"));
    QDir().mkpath(music);

    HistoryStore history(home.filePath(QStringLiteral("library")));
    // Tools as this machine has them, and none at all, for the two tool states.
    DependencyManager::Options found;
    found.installFolder = home.filePath(QStringLiteral("bin"));
    found.checkOnStart = true;
    DependencyManager dependencies(found);
    DownloadEngine engine(dependencies, history,
                          std::make_unique<QSettings>(home.filePath(QStringLiteral("settings.ini")),
                                                      QSettings::IniFormat));
    engine.setTargetFolder(QUrl::fromLocalFile(music));
    AudioPlayerService player;
    const Services services{engine, dependencies, history, player};

    const QString cover = writeCover(home.filePath(QStringLiteral("cover.png")));
    struct Sample
    {
        const char* title;
        const char* channel;
        AudioFormat format;
        bool withCover;
    };
    const Sample samples[] = {
        {"Morning Light (Acoustic Session)", "Harbour Lane", AudioFormat::mp3, true},
        {"Weekly Podcast #112 — The Long Interview About Everything", "Open Air Radio",
         AudioFormat::m4a, false},
        {"Field Recording: Rain on a Tin Roof", "Quiet Places", AudioFormat::flac, true},
    };
    QList<HistoryTrack> tracks;
    for (const Sample& sample : samples) {
        HistoryTrack track;
        track.id = QUuid::createUuid();
        track.title = QString::fromUtf8(sample.title);
        track.channel = QString::fromUtf8(sample.channel);
        track.duration = QStringLiteral("3:05");
        track.format = sample.format;
        track.quality = AudioQuality::k320;
        track.filePath = music + u'/' + track.title + u'.' + sample.format.rawValue();
        track.fileSize = QStringLiteral("7.4 MB");
        track.thumbnailUrl = sample.withCover ? cover : QString();
        track.completedAt = HistoryTrack::now();
        track.youtubeUrl = QStringLiteral("https://www.youtube.com/watch?v=dQw4w9WgXcQ");
        TestSupport::writeFile(track.filePath, silentWav(185));
        history.addTrack(track);
        tracks << track;
    }

    ScreenFactory factory(services);
    MainWindow window(services, factory);
    window.show();
    settle(800);
    settleCheck(dependencies);

    int saved = 0;
    auto shoot = [&](const QString& name) {
        settle();
        const QString path = out + u'/' + scheme + u'-' + name + QStringLiteral(".png");
        if (window.grab().save(path))
            ++saved;
        QTextStream(stdout) << path << '\n';
    };
    ContentView* content = window.contentView();

    content->setSelectedTab(NavigationItem::convert);
    shoot(QStringLiteral("convert-idle-empty"));
    // The rest of the converter states with a link in the field, as a user would have it.
    for (QLineEdit* field : window.findChildren<QLineEdit*>()) {
        if (field->accessibleName() == u"YouTube Video Link")
            field->setText(QStringLiteral("https://www.youtube.com/watch?v=dQw4w9WgXcQ"));
    }
    shoot(QStringLiteral("convert-idle"));
    engine.setCurrentStatus(DownloadStatus::downloading(
        0.423, QStringLiteral("2.4MiB/s"), QStringLiteral("00:12"), QStringLiteral("8.1MiB")));
    shoot(QStringLiteral("convert-downloading"));
    engine.setCurrentStatus(DownloadStatus::converting(QStringLiteral("Converting to MP3...")));
    shoot(QStringLiteral("convert-converting"));
    engine.setCurrentStatus(DownloadStatus::completed(tracks.first().filePath));
    shoot(QStringLiteral("convert-completed"));
    engine.setCurrentStatus(DownloadStatus::failed(
        QStringLiteral("ERROR: [generic] Unable to download webpage: HTTP Error 404: Not Found")));
    shoot(QStringLiteral("convert-failed"));
    engine.setCurrentStatus(DownloadStatus::idle());

    content->setSelectedTab(NavigationItem::batch);
    shoot(QStringLiteral("batch"));
    content->setSelectedTab(NavigationItem::history);
    shoot(QStringLiteral("library"));
    content->setSelectedTab(NavigationItem::settings);
    shoot(QStringLiteral("settings-tools-found"));

    // The mini player with artwork, then without, over the library.
    content->setSelectedTab(NavigationItem::history);
    player.play(tracks.first());
    settle(600);
    player.togglePlayPause();
    player.seek(65.9);
    shoot(QStringLiteral("miniplayer-artwork"));
    player.play(tracks.at(1));
    player.togglePlayPause();
    player.setVolume(0.4f);
    shoot(QStringLiteral("miniplayer-placeholder"));
    player.stop();

    // The tool states: a second window whose tool manager finds only a stand-in yt-dlp, and
    // whose installer talks to a loopback server that never answers, so it stays mid-step.
    {
        const QString tools = home.filePath(QStringLiteral("only-yt-dlp"));
        TestSupport::writeScript(tools + QStringLiteral("/yt-dlp"), "echo 2023.03.04\n");
        QTcpServer silent;
        silent.listen(QHostAddress::LocalHost);
        QObject::connect(&silent, &QTcpServer::newConnection, &silent, [&silent] {
            while (QTcpSocket* socket = silent.nextPendingConnection())
                socket->setParent(&silent);
        });
        const QUrl base(QStringLiteral("http://127.0.0.1:%1/").arg(silent.serverPort()));
        DependencyManager::Options missing;
        missing.resourceBinFolder = tools;
        missing.installFolder = home.filePath(QStringLiteral("missing-bin"));
        missing.systemFolders = {};
        missing.environment.insert(QStringLiteral("PATH"), QString());
        missing.ytDlpDownloadUrl = base.resolved(QUrl(QStringLiteral("yt-dlp_linux")));
        missing.ffmpegDownloadUrl = base.resolved(QUrl(QStringLiteral("ffmpeg.tar.xz")));
        missing.checkOnStart = true;
        DependencyManager missingTools(missing);
        DownloadEngine missingEngine(
            missingTools, history,
            std::make_unique<QSettings>(home.filePath(QStringLiteral("missing.ini")),
                                        QSettings::IniFormat));
        missingEngine.setTargetFolder(QUrl::fromLocalFile(music));
        missingEngine.setSelectedFormat(AudioFormat::flac);
        const Services missingServices{missingEngine, missingTools, history, player};
        ScreenFactory missingFactory(missingServices);
        MainWindow missingWindow(missingServices, missingFactory);
        missingWindow.show();
        settle(1500);
        settleCheck(missingTools);
        auto shootMissing = [&](const QString& name) {
            settle();
            const QString path = out + u'/' + scheme + u'-' + name + QStringLiteral(".png");
            if (missingWindow.grab().save(path))
                ++saved;
            QTextStream(stdout) << path << '\n';
        };
        missingWindow.contentView()->setSelectedTab(NavigationItem::convert);
        shootMissing(QStringLiteral("convert-tools-missing"));
        missingWindow.contentView()->setSelectedTab(NavigationItem::settings);
        shootMissing(QStringLiteral("settings-tools-missing"));
        missingTools.installDependenciesAutomatically();
        settle(300);
        shootMissing(QStringLiteral("settings-installing"));
        missingWindow.contentView()->setSelectedTab(NavigationItem::convert);
        shootMissing(QStringLiteral("convert-installing"));
    }

    // The narrowest window the user can make.
    window.resize(window.minimumSizeHint().expandedTo(QSize(820, 600)));
    content->setSelectedTab(NavigationItem::convert);
    shoot(QStringLiteral("convert-minimum-size"));

    // The painted components on their own, enabled and disabled.
    QWidget gallery;
    gallery.setAutoFillBackground(true);
    auto* column = new QVBoxLayout(&gallery);
    column->setContentsMargins(24, 24, 24, 24);
    column->setSpacing(16);
    auto* cardText =
        new QLabel(QStringLiteral("A GlassCard with its default radius 14 and inset 16."));
    column->addWidget(new GlassCard(cardText));
    column->addWidget(new GlassCard(new QLabel(QStringLiteral("Radius 10, inset 10.")), 10, 10));
    const QList<QColor> ripGradient = {Theme::red(gallery.palette()),
                                       Theme::orange(gallery.palette())};
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(new GradientButton(QStringLiteral("Start Ripping"),
                                          QStringLiteral("arrow.down.to.line.compact"),
                                          ripGradient));
    auto* disabled = new GradientButton(QStringLiteral("Start Ripping"),
                                        QStringLiteral("arrow.down.to.line.compact"), ripGradient);
    disabled->setEnabled(false);
    buttons->addWidget(disabled);
    buttons->addWidget(new GradientButton(QStringLiteral("Go"), QStringLiteral("play.fill"),
                                          {Theme::accent(gallery.palette())}));
    buttons->addStretch(1);
    column->addLayout(buttons);
    column->addStretch(1);
    gallery.resize(640, 320);
    gallery.show();
    settle(300);
    const QString galleryPath = out + u'/' + scheme + QStringLiteral("-components.png");
    if (gallery.grab().save(galleryPath))
        ++saved;
    QTextStream(stdout) << galleryPath << '\n';

    // The application icon at a launcher's and a title bar's size.
    QImage icons(256 + 48 + 24 + 16, 256, QImage::Format_ARGB32_Premultiplied);
    icons.fill(Qt::transparent);
    {
        const QIcon appIcon(QStringLiteral(VELDTONE_ICON_SVG));
        QPainter painter(&icons);
        appIcon.paint(&painter, QRect(0, 0, 256, 256));
        appIcon.paint(&painter, QRect(256 + 8, 104, 48, 48));
        appIcon.paint(&painter, QRect(256 + 8 + 48 + 8, 120, 16, 16));
    }
    const QString iconPath = out + QStringLiteral("/app-icon.png");
    if (icons.save(iconPath))
        ++saved;

    history.waitForSaves();
    return saved > 0 ? 0 : 1;
}
