#include "bench/benchharness.h"

#include "profile/profile.h"
#include "render/summarysheet.h"

#include <QGuiApplication>

int main(int argc, char *argv[])
{
    QGuiApplication app(argc, argv);

    Profile profile;
    profile.setName(QStringLiteral("Four-stroke single 400-650 cc enduro"));
    profile.setNotes(
        QStringLiteral("Plug BR8ES, gap 0.7 mm. Richer main jet for the track day; back to 148 after."));
    IgnitionMap map;
    const int points[10][2] = {{900, 8}, {1500, 10}, {2500, 16}, {3200, 22}, {4000, 27}, {4800, 31},
        {5500, 33}, {6500, 34}, {7300, 34}, {8000, 34}};
    for (int i = 0; i < kMapPointCount; ++i)
        map.setPoint(i, points[i][0], points[i][1]);
    profile.setMap(map);
    profile.setSensorCoefficients({43.0, -0.00035, -1e-8});
    const QString header = summarySheetHeaderLine(20000, QDateTime::currentDateTime());

    runBenchmark("pdf.print", 3, [&] {
        volatile int size = summarySheetPdf(profile, header).size();
        (void)size;
    });
    return 0;
}
