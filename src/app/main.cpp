#include "ColorSchemeWatcher.h"
#include "StartupStyle.h"
#include "services/AudioPlayerService.h"
#include "services/DependencyManager.h"
#include "services/DownloadEngine.h"
#include "services/HistoryStore.h"
#include "views/ContentView.h"
#include "views/MainWindow.h"
#include "views/NavigationItem.h"
#include "views/ScreenFactory.h"

#include <QApplication>
#include <QIcon>
#include <QStyleFactory>
#include <QTimer>
#include <cstring>
#include <dlfcn.h>
#include <thread>

namespace {

// Fontconfig parses its whole configuration the first time any text is measured. Qt's own
// font database already links it in; asking it to load on a thread of its own while Qt
// connects to the display takes that parse off the way to the first window. Qt then finds it
// loaded (fontconfig shares one configuration between threads).
void loadFontconfig()
{
    void* symbol = dlsym(RTLD_DEFAULT, "FcInit");
    if (!symbol)
        return;
    int (*init)() = nullptr;
    std::memcpy(&init, &symbol, sizeof init);
    init();
}

} // namespace

int main(int argc, char** argv)
{
    std::thread fontconfig(loadFontconfig);
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Veldtone"));
    QApplication::setOrganizationName(QStringLiteral("Veldtone"));
    QApplication::setApplicationVersion(QStringLiteral(VELDTONE_VERSION));
    QGuiApplication::setDesktopFileName(QStringLiteral("io.github.veldtone.Veldtone"));

    // One look on every desktop, coloured by our own light and dark palettes.
    const Theme::Scheme scheme = ColorSchemeWatcher::initialScheme();
    if (QStyle* fusion = QStyleFactory::create(QStringLiteral("Fusion")))
        QApplication::setStyle(new StartupStyle(fusion));
    ColorSchemeWatcher::apply(scheme);
    ColorSchemeWatcher colorScheme;
    // Before any text is measured; by now the parse is usually done.
    fontconfig.join();

    // The four services, created once in this order and shared by every screen.
    DownloadEngine& engine = DownloadEngine::shared();
    DependencyManager& dependencies = DependencyManager::shared();
    HistoryStore& history = HistoryStore::shared();
    AudioPlayerService& player = AudioPlayerService::shared();
    const Services services{engine, dependencies, history, player};

    ScreenFactory factory(services);
    MainWindow window(services, factory);
    // Lets the screenshot script open any destination first.
    if (const auto start =
            Navigation::fromRawValue(qEnvironmentVariable("VELDTONE_START_SCREEN"))) {
        window.contentView()->setSelectedTab(*start);
    }
    window.show();
    window.raise();
    window.activateWindow();
    // Looking the icon up in the desktop's icon theme reads the theme's folders: not before the
    // window first shows.
    QTimer::singleShot(0, &app, [] {
        QApplication::setWindowIcon(QIcon::fromTheme(QStringLiteral("io.github.veldtone.Veldtone"),
                                                     QIcon(QStringLiteral(":/veldtone.svg"))));
    });
    // Lets a profiler count the work up to the first shown window and no further.
    if (qEnvironmentVariableIsSet("VELDTONE_QUIT_AFTER_SHOW"))
        QTimer::singleShot(0, &app, &QCoreApplication::quit);

    return app.exec();
}
