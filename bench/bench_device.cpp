#include "bench/benchharness.h"

#include "device/cbridgecomm.h"
#include "device/ccalibrator.h"
#include "device/cdeviceflow.h"
#include "device/cpinger.h"
#include "device/cvirtualcdi.h"
#include "device/serialports.h"

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

// The virtual CDI as the one port there is, so that the flow finds it as the bridge.
struct OnePort : IPortLister
{
    explicit OnePort(const QString &name)
        : name(name)
    { }
    std::vector<SerialPortEntry> ports() const override { return {{name, {}, {}, 0, 0, false, true}}; }
    std::unique_ptr<IPortLister> clone() const override { return std::make_unique<OnePort>(name); }
    const QString name;
};

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
    // As the program programs: the exchange, then the read back and the comparison.
    CDeviceFlow flow(nullptr, OnePort(cdi.portName()));
    flow.setProgrammedFolder(QString());
    runBenchmark(
        "device.programVerified", 1,
        [&] {
            ExchangeResult result;
            QEventLoop loop;
            const QMetaObject::Connection done = QObject::connect(
                &flow, &CDeviceFlow::finished, &loop, [&](const ExchangeResult &ended) {
                    result = ended;
                    loop.quit();
                });
            flow.program(profile, true);
            loop.exec();
            QObject::disconnect(done);
            if (result.readBack != ExchangeResult::ReadBack::Verified) {
                std::fprintf(stderr, "programming not verified: kind %d\n", int(result.kind));
                std::exit(1);
            }
        },
        5);
    return 0;
}
