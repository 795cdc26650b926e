#include <QApplication>
#include <QMainWindow>

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("sparkwright.example"));
    QApplication::setApplicationName(QStringLiteral("Sparkwright"));
    QApplication::setApplicationVersion(QStringLiteral("0.95.1"));
    QMainWindow window;
    window.setWindowTitle(QStringLiteral("Sparkwright"));
    window.resize(800, 560);
    window.show();
    return app.exec();
}
