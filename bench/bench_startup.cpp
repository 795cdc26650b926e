// How long the program takes from its launch to its main window on the screen, with the data
// files loaded and the start page built, next to an empty Qt main window of the same size
// launched the same way; their ratio (startup.ratio) is what the program adds to Qt's own
// start. Each start is a fresh process (this program started again with --child), alternating
// between the two; the time runs from just before the process is launched to the window's
// first exposure on the platform in use (an X server when DISPLAY is set, as scripts/bench.sh
// does it with a virtual one). Prints the medians as "NAME MEDIAN_MS" and the ratio, and on
// standard error the peak memory of both.
#include "cstartup.h"
#include "mainwindow.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QMainWindow>
#include <QProcess>
#include <QTemporaryDir>

#include <QTimer>
#include <QWindow>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <vector>

namespace {

constexpr int kRuns = 15;
const char kFirstWindow[] = "firstWindow";
const char kEmptyWindow[] = "emptyQtWindow";
const char kTextWindow[] = "textQtWindow";

// The largest resident set of this process so far, in KiB.
long peakResidentKiB()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith("VmHWM:"))
            return line.mid(6).trimmed().split(' ').value(0).toLong();
    }
    return -1;
}

// The clock both processes read, so that the child's moment of exposure can be set against the
// parent's moment of launch.
qint64 monotonicNs()
{
    timespec now {};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return qint64(now.tv_sec) * 1000000000 + now.tv_nsec;
}

// The window is shown and the platform has exposed it (its first frame is painted in the
// handling of that exposure). False when that does not happen within ten seconds.
bool showUntilExposed(QWidget &window)
{
    window.show();
    QElapsedTimer waited;
    waited.start();
    QTimer wake; // keeps the wait below from blocking for good
    wake.start(20);
    while (!window.windowHandle() || !window.windowHandle()->isExposed()) {
        if (waited.elapsed() > 10000)
            return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

class StopAtMainWindow : public IModalSteps
{
public:
    void waitForErrorWindow(ErrorGui &) override { failed = true; }
    int runDisclaimer(DisclaimerDialog &) override
    {
        failed = true;
        return 0;
    }
    int runMainWindow(MainWindow &window) override
    {
        failed = !showUntilExposed(window);
        exposedAt = monotonicNs();
        size = window.size();
        return 0;
    }

    qint64 exposedAt = 0;
    QSize size;
    bool failed = false;
};

int runFirstWindow(int argc, char **argv, const QString &scratch)
{
    StopAtMainWindow steps;
    CStartup::Surroundings surroundings;
    // The data files stand in the build folder, one above the benchmarks.
    surroundings.programDirectory
        = QFileInfo(QString::fromLocal8Bit(argv[0])).absoluteDir().filePath(QStringLiteral(".."));
    surroundings.lockDirectory = scratch;
    surroundings.localeName = QStringLiteral("en_US");
    CStartup startup(steps, surroundings);
    int programArgc = 1;
    startup.run(programArgc, argv);
    Q_UNUSED(argc)
    if (steps.failed || steps.exposedAt == 0)
        return 1;
    std::printf(
        "%lld %ld %d %d\n", steps.exposedAt, peakResidentKiB(), steps.size.width(), steps.size.height());
    return 0;
}

// The empty window takes the size the program's window had; it comes as "WIDTHxHEIGHT". With
// withText, it shows one line of text: the least that any window with words pays for setting up
// the system's fonts.
int runEmptyWindow(int argc, char **argv, const QString &size, bool withText)
{
    int programArgc = 1;
    QApplication application(programArgc, argv);
    Q_UNUSED(argc)
    QMainWindow window;
    if (withText)
        window.setCentralWidget(new QLabel(QStringLiteral("Sparkwright"), &window));
    window.resize(size.section(QLatin1Char('x'), 0, 0).toInt(), size.section(QLatin1Char('x'), 1, 1).toInt());
    if (!showUntilExposed(window))
        return 1;
    const qint64 exposedAt = monotonicNs();
    std::printf("%lld %ld %d %d\n", exposedAt, peakResidentKiB(), window.width(), window.height());
    return 0;
}

struct Sample
{
    double ms;
    long peakKiB;
    QSize size;
};

bool runChild(const QString &program, const char *kind, const QString &argument, std::vector<Sample> &samples)
{
    QProcess child;
    const qint64 launchedAt = monotonicNs();
    child.start(program, {QStringLiteral("--child"), QLatin1String(kind), argument});
    if (!child.waitForFinished(-1) || child.exitCode() != 0) {
        std::fprintf(stderr, "%s start failed: %s\n", kind, child.readAllStandardError().constData());
        return false;
    }
    const QList<QByteArray> fields = child.readAllStandardOutput().trimmed().split(' ');
    samples.push_back({double(fields.value(0).toLongLong() - launchedAt) / 1e6, fields.value(1).toLong(),
        QSize(fields.value(2).toInt(), fields.value(3).toInt())});
    return true;
}

double median(std::vector<Sample> samples)
{
    std::sort(samples.begin(), samples.end(), [](const Sample &a, const Sample &b) { return a.ms < b.ms; });
    return samples[samples.size() / 2].ms;
}

long peak(const std::vector<Sample> &samples)
{
    long most = 0;
    for (const Sample &sample : samples)
        most = std::max(most, sample.peakKiB);
    return most;
}

} // namespace

int main(int argc, char *argv[])
{
    if (argc == 4 && qstrcmp(argv[1], "--child") == 0) {
        if (qstrcmp(argv[2], kFirstWindow) == 0)
            return runFirstWindow(argc, argv, QString::fromLocal8Bit(argv[3]));
        return runEmptyWindow(argc, argv, QString::fromLocal8Bit(argv[3]), qstrcmp(argv[2], kTextWindow) == 0);
    }

    // The disclaimer counts as accepted in the user's data folder, which the started copies take
    // over, and the single-copy lock lives in a folder of its own.
    QTemporaryDir scratch;
    const QString userFolder
        = QDir(scratch.path()).filePath(QStringLiteral("sparkwright.example/Sparkwright"));
    qputenv("XDG_DATA_HOME", QFile::encodeName(scratch.path()));
    QFile accepted(QDir(userFolder).filePath(QStringLiteral("disclaimer.a")));
    if (!scratch.isValid() || !QDir().mkpath(userFolder) || !accepted.open(QIODevice::WriteOnly)
        || accepted.write(QByteArray::fromHex("550500006901000000")) != 9)
        return 1;
    accepted.close();

    const QString program = QString::fromLocal8Bit(argv[0]);
    std::vector<Sample> first;
    std::vector<Sample> empty;
    std::vector<Sample> text;
    // One of each first, unmeasured, so that both find the libraries in the page cache.
    std::vector<Sample> warmUp;
    if (!runChild(program, kFirstWindow, scratch.path(), warmUp))
        return 1;
    const QSize size = warmUp.front().size;
    const QString sizeText = QStringLiteral("%1x%2").arg(size.width()).arg(size.height());
    if (!runChild(program, kEmptyWindow, sizeText, warmUp))
        return 1;
    for (int run = 0; run < kRuns; ++run) {
        if (!runChild(program, kFirstWindow, scratch.path(), first)
            || !runChild(program, kEmptyWindow, sizeText, empty) || !runChild(program, kTextWindow, sizeText, text))
            return 1;
    }

    const double firstMs = median(first);
    const double emptyMs = median(empty);
    std::printf("startup.firstWindow %.6f\n", firstMs);
    std::printf("startup.emptyQtWindow %.6f\n", emptyMs);
    std::printf("startup.textQtWindow %.6f\n", median(text));
    std::printf("startup.ratio %.6f\n", firstMs / emptyMs);
    std::fflush(stdout);
    std::fprintf(stderr, "startup: %dx%d windows on %s; peak memory %ld KiB and %ld KiB\n", size.width(),
        size.height(),
        qPrintable(qEnvironmentVariable("QT_QPA_PLATFORM", QStringLiteral("the default platform"))),
        peak(first), peak(empty));
    return 0;
}
