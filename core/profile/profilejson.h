#pragma once

#include "profile/defaultlibrary.h"
#include "profile/hintcatalog.h"
#include "profile/profile.h"

#include "profile/fileerror.h"

#include <QJsonObject>

// The readable JSON form of profiles, libraries and hint catalogs that the command-line tool
// prints and builds from. Keys are the profile's field names; doubles keep every bit, and the
// non-finite ones are written as the strings "NaN", "Infinity" and "-Infinity".
QJsonObject profileToJson(const Profile &profile);
QJsonObject libraryToJson(const DefaultLibrary &library);
QJsonObject hintCatalogToJson(const HintCatalog &catalog);

// Each refuses input with a missing key, a value of the wrong type or one out of its type's
// range as damaged, the detail naming the key ("profiles[2].map[3][1]: expected an integer").
tl::expected<Profile, FileError> profileFromJson(const QJsonObject &object);
tl::expected<DefaultLibrary, FileError> libraryFromJson(const QJsonObject &object);
tl::expected<HintCatalog, FileError> hintCatalogFromJson(const QJsonObject &object);
