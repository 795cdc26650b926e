#pragma once

#include <QString>

// Where the program and the command-line tool find the files they ship with (the factory
// library, the hints and the translations): first in the working directory, then beside the
// executable (the build folder), then in the share folder of an installation
// (<prefix>/share/sparkwright beside <prefix>/bin). The answer is the first path that exists,
// else the bare name, so that a failed open still names the file as the user knows it.
QString locateDataFile(const QString &fileName);

// The folder of the running executable, also before an application object exists; empty when
// it cannot be told.
QString executableDirectory();
