// How long the program takes from its start to its main window on the screen, with the data
// files loaded and every page and dialog built, next to an empty Qt main window shown the same
// way; their ratio is what the program adds to Qt's own start. Each start runs in a fresh
// process (this program started again with --child), alternating between the two, on the
// offscreen platform. Prints the medians as "NAME MEDIAN_MS" and, on standard error, the peak
// memory of both and the ratio.
#include "app/cstartup.h"
#include "frame/mainwindow.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QMainWindow>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

constexpr int kRuns = 15;
const char kFirstWindow[] = "firstWindow";
const char kEmptyWindow[] = "emptyQtWindow";

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

// The window is shown and its first frame painted.
void settle(QWidget &window)
{
    window.show();
    QCoreApplication::processEvents();
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
        settle(window);
        elapsedMs = double(timer.nsecsElapsed()) / 1e6;
        return 0;
    }

    QElapsedTimer timer;
    double elapsedMs = -1.0;
    bool failed = false;
};

int runFirstWindow(int argc, char **argv, const QString &scratch)
{
    StopAtMainWindow steps;
    steps.timer.start();
    CStartup::Surroundings surroundings;
    surroundings.programDirectory = scratch;
    surroundings.lockDirectory = scratch;
    surroundings.localeName = QStringLiteral("en_US");
    CStartup startup(steps, surroundings);
    int programArgc = 1;
    startup.run(programArgc, argv);
    Q_UNUSED(argc)
    if (steps.failed || steps.elapsedMs < 0)
        return 1;
    std::printf("%.3f %ld\n", steps.elapsedMs, peakResidentKiB());
    return 0;
}

int runEmptyWindow(int argc, char **argv)
{
    QElapsedTimer timer;
    timer.start();
    int programArgc = 1;
    QApplication application(programArgc, argv);
    Q_UNUSED(argc)
    QMainWindow window;
    window.resize(800, 600);
    settle(window);
    const double elapsedMs = double(timer.nsecsElapsed()) / 1e6;
    std::printf("%.3f %ld\n", elapsedMs, peakResidentKiB());
    return 0;
}

struct Sample
{
    double ms;
    long peakKiB;
};

bool runChild(const QString &program, const char *kind, const QString &scratch, std::vector<Sample> &samples)
{
    QProcess child;
    child.start(program, {QStringLiteral("--child"), QLatin1String(kind), scratch});
    if (!child.waitForFinished(-1) || child.exitCode() != 0) {
        std::fprintf(stderr, "%s start failed: %s\n", kind, child.readAllStandardError().constData());
        return false;
    }
    const QList<QByteArray> fields = child.readAllStandardOutput().trimmed().split(' ');
    samples.push_back({fields.value(0).toDouble(), fields.value(1).toLong()});
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
        return runEmptyWindow(argc, argv);
    }

    // The disclaimer counts as accepted and the single-copy lock lives in a folder of its own.
    QTemporaryDir scratch;
    QFile accepted(QDir(scratch.path()).filePath(QStringLiteral("disclaimer.a")));
    if (!scratch.isValid() || !accepted.open(QIODevice::WriteOnly)
        || accepted.write(QByteArray::fromHex("550500006901000000")) != 9)
        return 1;
    accepted.close();

    const QString program = QString::fromLocal8Bit(argv[0]);
    std::vector<Sample> first;
    std::vector<Sample> empty;
    // One of each first, unmeasured, so that both find the libraries in the page cache.
    std::vector<Sample> warmUp;
    if (!runChild(program, kFirstWindow, scratch.path(), warmUp)
        || !runChild(program, kEmptyWindow, scratch.path(), warmUp))
        return 1;
    for (int run = 0; run < kRuns; ++run) {
        if (!runChild(program, kFirstWindow, scratch.path(), first)
            || !runChild(program, kEmptyWindow, scratch.path(), empty))
            return 1;
    }

    const double firstMs = median(first);
    const double emptyMs = median(empty);
    std::printf("startup.firstWindow %.6f\n", firstMs);
    std::printf("startup.emptyQtWindow %.6f\n", emptyMs);
    std::fflush(stdout);
    std::fprintf(stderr, "startup: first window / empty window = %.2f; peak memory %ld KiB and %ld KiB\n",
        firstMs / emptyMs, peak(first), peak(empty));
    return 0;
}
