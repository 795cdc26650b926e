#include "clicommands.h"

#include "data/datafilelocation.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileDevice>
#include <QFileInfo>
#include <QFont>
#include <QGuiApplication>

#include <cstdio>
#include <memory>

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/lsan_interface.h>
#endif
#ifdef Q_OS_WIN
#include <fcntl.h>
#include <io.h>
#endif

namespace {

std::unique_ptr<QCoreApplication> createApplication(int &argc, char **argv, bool gui)
{
    if (!gui)
        return std::make_unique<QCoreApplication>(argc, argv);
    // Drawing needs fonts and so a QGuiApplication; it never needs a display.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
#ifdef Q_OS_WIN
    // There the offscreen platform reads its fonts from a folder: the DejaVu fonts installed beside
    // the tool, so that its sheets and graphs come out as on Linux, else the system's fonts.
    if (qEnvironmentVariableIsEmpty("QT_QPA_FONTDIR")) {
        const QString beside = executableDirectory() + QStringLiteral("/fonts");
        qputenv("QT_QPA_FONTDIR",
            QFile::encodeName(QFileInfo::exists(beside) ? beside : qEnvironmentVariable("WINDIR") + QStringLiteral("/Fonts")));
    }
#endif
#if defined(__SANITIZE_ADDRESS__)
    // The offscreen platform never frees the screen it sets up here; in a sanitizer build that
    // one allocation is kept out of the leak check, everything after it is still checked.
    const __lsan::ScopedDisabler platformSetUp;
#endif
    auto application = std::make_unique<QGuiApplication>(argc, argv);
    // Drawn with the same hinting on every system (the light, vertical-only hinting Linux's
    // fontconfig chooses by default), so that a graph comes out alike everywhere.
    QFont font = QGuiApplication::font();
    font.setHintingPreference(QFont::PreferVerticalHinting);
    QGuiApplication::setFont(font);
    return application;
}

} // namespace

int main(int argc, char *argv[])
{
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    const std::unique_ptr<QCoreApplication> app
        = createApplication(argc, argv, CliCommands::needsGui(arguments));
#ifdef Q_OS_WIN
    // The same bytes as on Linux, "\n" ending each line, whether the output goes to a file or a
    // pipe: JSON and messages compare and travel alike.
    ::_setmode(::_fileno(stdout), _O_BINARY);
    ::_setmode(::_fileno(stderr), _O_BINARY);
#endif
    QTextStream out(stdout);
    QTextStream err(stderr);
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    // Qt 6 writes UTF-8 by default; Qt 5 would follow the locale.
    out.setCodec("UTF-8");
    err.setCodec("UTF-8");
#endif
    CliCommands commands(out, err);
    const int status = commands.run(QCoreApplication::arguments().mid(1));
    // Output that never arrived (a full disk, a closed pipe, /dev/full) is a failure like any
    // other write, not a success.
    out.flush();
    if (out.status() != QTextStream::Ok) {
        const auto *device = qobject_cast<const QFileDevice *>(out.device());
        err << "sparkwright-cli: cannot write the output: "
            << (device ? device->errorString() : QStringLiteral("write failed")) << "\n";
        err.flush();
        return CliCommands::kFileError;
    }
    return status;
}
