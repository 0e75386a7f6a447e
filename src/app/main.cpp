// SPDX-License-Identifier: GPL-3.0-or-later
#include "AppServices.h"
#include "ColorSchemeWatcher.h"
#include "models/Links.h"
#include "platform/Mpris.h"
#include "platform/SingleInstance.h"
#include "platform/TerminationSignals.h"
#include "platform/Translations.h"
#include "services/ArtworkCache.h"
#include "services/HistoryStore.h"
#include "services/Services.h"
#include "views/components/AppStyle.h"
#include "views/shell/ContentView.h"
#include "views/shell/MainWindow.h"
#include "views/shell/NavigationItem.h"
#include "views/shell/ScreenFactory.h"

#include <QApplication>
#include <QIcon>
#include <QTimer>
#include <QWindow>

namespace {

// Runs work once the window has first been put on screen. Reading a large library or the icon
// theme sooner competes with the first frame (startup_with_100k_library_ratio: 1.25 when the
// read began right after show()).
class AfterFirstFrame : public QObject
{
public:
    AfterFirstFrame(QWindow* window, std::function<void()> work)
        : QObject(window)
        , m_work(std::move(work))
    {
        window->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Expose && static_cast<QWindow*>(watched)->isExposed()) {
            // The expose is answered with the first frame; the work waits until that is done.
            QTimer::singleShot(0, this, [this] {
                m_work();
                deleteLater();
            });
            watched->removeEventFilter(this);
        }
        return false;
    }

private:
    std::function<void()> m_work;
};

} // namespace

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Veldtone"));
    QApplication::setOrganizationName(QStringLiteral("Veldtone"));
    QApplication::setApplicationVersion(QStringLiteral(VELDTONE_VERSION));
    QGuiApplication::setDesktopFileName(QStringLiteral("io.github.veldtone.Veldtone"));
    // The user's language, when we ship it, before any text is made.
    Translations::install();

    // A second start hands its links to the running window and ends, so two copies never
    // write one library.
    const QStringList links = Links::fromArguments(app.arguments().mid(1));
    SingleInstance instance(HistoryStore::defaultFolder());
    if (instance.handOver(links))
        return 0;
    instance.listen();

    // One look on every desktop, coloured by our own light and dark palettes.
    const Theme::Scheme scheme = ColorSchemeWatcher::initialScheme();
    QApplication::setStyle(new AppStyle);
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
    window.openLinks(links);
    // A logout or a kill quits as File › Quit does, so no tool outlives the app.
    TerminationSignals terminations;
    QObject::connect(&terminations, &TerminationSignals::received, &window,
                     &MainWindow::quitWithoutAsking);
    QObject::connect(&instance, &SingleInstance::activated, &window,
                     [&window](const QStringList& handed, const QByteArray& activationToken) {
                         window.openLinks(handed);
                         window.bringToFront(activationToken);
                     });
    // The screens show the library loading until it is in; looking the icon up in the
    // desktop's icon theme reads the theme's folders.
    // The desktop's media controls learn of the player once the window is up.
    std::unique_ptr<Mpris> mpris;
    // Lets a profiler count the work up to the first frame and no further.
    const bool quitAfterFirstFrame = qEnvironmentVariableIsSet("VELDTONE_QUIT_AFTER_FIRST_FRAME");
    new AfterFirstFrame(window.windowHandle(), [&owner, &window, &mpris, quitAfterFirstFrame] {
        if (quitAfterFirstFrame) {
            QCoreApplication::quit();
            return;
        }
        owner.afterFirstFrame();
        const Services& services = owner.services();
        mpris = std::make_unique<Mpris>(services.player, services.queue, services.history,
                                        ArtworkCache::defaultFolder());
        QObject::connect(mpris.get(), &Mpris::raiseRequested, &window,
                         [&window] { window.bringToFront({}); });
        QObject::connect(mpris.get(), &Mpris::quitRequested, &window, &QWidget::close);
        QApplication::setWindowIcon(QIcon::fromTheme(QStringLiteral("io.github.veldtone.Veldtone"),
                                                     QIcon(QStringLiteral(":/veldtone.svg"))));
    });
    return app.exec();
}
