#pragma once

#include "profile/defaultlibrary.h"
#include "profile/hintcatalog.h"
#include "profile/profile.h"

#include <QJsonObject>
#include <QString>

#include <memory>
#include <optional>

// The readable JSON form of profiles, libraries and hint catalogs that the command-line tool
// prints and builds from. Keys are the profile's field names; doubles keep every bit, and the
// non-finite ones are written as the strings "NaN", "Infinity" and "-Infinity".
QJsonObject profileToJson(const Profile &profile);
QJsonObject libraryToJson(const DefaultLibrary &library);
QJsonObject hintCatalogToJson(const HintCatalog &catalog);

// Each refuses input with a missing key, a value of the wrong type or one out of its type's
// range; error then names the key ("profiles[2].map[3][1]: ...").
std::optional<Profile> profileFromJson(const QJsonObject &object, QString &error);
std::unique_ptr<DefaultLibrary> libraryFromJson(const QJsonObject &object, QString &error);
std::unique_ptr<HintCatalog> hintCatalogFromJson(const QJsonObject &object, QString &error);
