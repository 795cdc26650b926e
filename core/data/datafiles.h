#pragma once

#include "data/datafilelocation.h"
#include "profile/defaultlibrary.h"
#include "profile/hintcatalog.h"

// The data files the program and the command-line tool ship with, named as the user knows them.
inline constexpr char kLibraryFileName[] = "default.cds";
inline constexpr char kHintsFileName[] = "hints.cdh";

// Each reads its file from the program's own installation in that folder (see locateDataFile()).
// The flag is passed on to the library loader: true on a normal start, false when only the
// version is asked for.
tl::expected<DefaultLibrary, FileError> loadInstalledLibrary(
    bool normalStart = true, const QString &programDirectory = executableDirectory());
tl::expected<HintCatalog, FileError> loadInstalledHints(
    const QString &programDirectory = executableDirectory());
