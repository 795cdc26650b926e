#include "data/datafiles.h"

tl::expected<DefaultLibrary, FileError> loadInstalledLibrary(
    bool normalStart, const QString &programDirectory)
{
    return readFileWith(locateDataFile(QLatin1String(kLibraryFileName), programDirectory),
        [normalStart](QIODevice &in) { return loadDefaultLibrary(in, normalStart); });
}

tl::expected<HintCatalog, FileError> loadInstalledHints(const QString &programDirectory)
{
    return readFileWith(locateDataFile(QLatin1String(kHintsFileName), programDirectory), loadHintCatalog);
}
