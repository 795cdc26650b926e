#include "bench/benchharness.h"

#include "device/cbridgecomm.h"
#include "device/ccalibrator.h"
#include "device/cpinger.h"
#include "device/cvirtualcdi.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QRandomGenerator>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>

namespace {

Profile sampleProfile()
{
    Profile profile;
    profile.setName(QStringLiteral("Bench"));
    IgnitionMap map;
    for (int i = 0; i < kMapPointCount; ++i)
        map.setPoint(i, 1000 * (i + 1), 10 + i);
    profile.setMap(map);
    profile.setSensorCoefficients({40.0, 0.0, 0.0});
    return profile;
}

// One whole exchange with the program's own pacing, from opening the port to the result.
template<typename Make> void exchange(CBridgeComm &bridge, const QString &port, Make make)
{
    ExchangeResult result;
    QEventLoop loop;
    const QMetaObject::Connection done
        = QObject::connect(&bridge, &CBridgeComm::finished, &loop, [&](const ExchangeResult &ended) {
              result = ended;
              loop.quit();
          });
    if (!bridge.runTransaction(make(), port) || (loop.exec(), !result.succeeded())) {
        std::fprintf(stderr, "exchange failed: kind %d\n", int(result.kind));
        std::exit(1);
    }
    QObject::disconnect(done);
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    // Keep the virtual CDI out of the port list of anything else running.
    QTemporaryDir runtime;
    qputenv("XDG_RUNTIME_DIR", runtime.path().toLocal8Bit());
    CVirtualCdi cdi;
    const QString error = cdi.open();
    if (!error.isEmpty()) {
        std::fprintf(stderr, "%s\n", qPrintable(error));
        return 1;
    }
    CBridgeComm bridge;
    QRandomGenerator random(1);
    const Profile profile = sampleProfile();

    runBenchmark(
        "device.pingExchange", 1,
        [&] { exchange(bridge, cdi.portName(), [&] { return std::make_unique<CPinger>(random); }); }, 5);
    runBenchmark(
        "device.programExchange", 1,
        [&] {
            exchange(
                bridge, cdi.portName(), [&] { return std::make_unique<CCalibrator>(profile, true, random); });
        },
        5);
    return 0;
}
