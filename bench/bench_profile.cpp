#include "bench/benchharness.h"

#include "profile/container.h"
#include "profile/defaultlibrary.h"
#include "profile/mapvalidation.h"
#include "profile/profilefile.h"
#include "profile/profilerecord.h"

#include <QBuffer>
#include <QCoreApplication>

namespace {

Profile sampleProfile()
{
    Profile profile;
    profile.setName(QStringLiteral("Four-stroke single 450 cc"));
    profile.setNotes(QStringLiteral("Track day, richer jetting"));
    IgnitionMap map;
    for (int i = 0; i < kMapPointCount; ++i)
        map.setPoint(i, 1000 + 1000 * i, 8 + 2 * i);
    profile.setMap(map);
    profile.setSensorCoefficients({38.0, -0.0004, -1e-8});
    return profile;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    const Profile profile = sampleProfile();
    const QByteArray file = profileFileBytes(profile);

    runBenchmark("profile.writeFile", 2000, [&] {
        volatile int size = profileFileBytes(profile).size();
        (void)size;
    });
    runBenchmark("profile.readFile", 2000, [&] {
        QBuffer buffer;
        buffer.setData(file);
        buffer.open(QIODevice::ReadOnly);
        volatile bool ok = readProfileFile(buffer).has_value();
        (void)ok;
    });
    runBenchmark("profile.validate", 5000, [&] {
        volatile bool errors = validate(profile).hasErrors();
        (void)errors;
    });

    DefaultLibrary library;
    for (int i = 0; i < 64; ++i)
        library.append(profile);
    const QByteArray libraryBytes = defaultLibraryBytes(library);
    runBenchmark("library.load64", 50, [&] {
        QBuffer buffer;
        buffer.setData(libraryBytes);
        buffer.open(QIODevice::ReadOnly);
        volatile bool ok = loadDefaultLibrary(buffer, true).has_value();
        (void)ok;
    });
    return 0;
}
