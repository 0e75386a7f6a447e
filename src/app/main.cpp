#include "AppServices.h"
#include "ColorSchemeWatcher.h"
#include "StartupStyle.h"
#include "views/shell/ContentView.h"
#include "views/shell/MainWindow.h"
#include "views/shell/NavigationItem.h"
#include "views/shell/ScreenFactory.h"

#include <QApplication>
#include <QIcon>
#include <QStyleFactory>
#include <QTimer>

int main(int argc, char** argv)
{
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

    // Made after the application object and destroyed before it.
    AppServices owner;
    ScreenFactory factory(owner.services());
    MainWindow window(owner.services(), factory);
    // Lets the screenshot script open any destination first.
    if (const auto start =
            Navigation::fromRawValue(qEnvironmentVariable("VELDTONE_START_SCREEN"))) {
        window.contentView()->setSelectedTab(*start);
    }
    window.show();
    window.raise();
    window.activateWindow();
    // The library is read once the window is up; the screens show it loading until then.
    QTimer::singleShot(0, &app, [&owner] { owner.loadLibrary(); });
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
