#include <QApplication>
#include <QMainWindow>

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Veldtone"));
    QApplication::setOrganizationName(QStringLiteral("Veldtone"));
    QMainWindow window;
    window.resize(880, 660);
    window.show();
    return app.exec();
}
