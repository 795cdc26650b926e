#pragma once

#include <QString>

// The folder of the running executable, also before an application object exists; empty when
// it cannot be told.
QString executableDirectory();

// Where the program and the command-line tool find the files they ship with (the factory
// library, the hints and the translation): beside the executable in a build folder, else in the
// share folder of an installation (<prefix>/share/sparkwright beside <prefix>/bin). Only the
// program's own installation counts, never the working directory: a folder the user happens to
// start from could hold a planted library whose "factory templates" would go into the CDI.
// When the file is in neither place, the answer is where it belongs beside the program, so that
// a failed open says that it is missing there.
QString locateDataFile(const QString &fileName, const QString &programDirectory = executableDirectory());
