#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <vector>

class DefaultLibrary;
class Profile;
struct ImageDifference;

// What the comparison says about each profile: how it is named in the list and the legend, and
// how one of its values reads beside the first profile's. Texts are translated in the
// "CProfileItem" context, where the list entries have always been.

// "Default: name" or "Custom: name".
QString profileListText(const Profile &profile);

// The list texts of the profiles in order; a text that occurs more than once is numbered in
// order of appearance, "Default: name (1)", "Default: name (2)", so that every legend entry
// names one curve.
QStringList comparisonLabels(const std::vector<Profile> &profiles);

// A value of the value table: the value with its unit, followed by its difference to the first
// profile's value in brackets when there is one ("3700 (+200)", "26° (-2)").
QString comparedValueText(int value, int firstValue, const QString &unit);

// The compared maps for a spreadsheet: a header row, then one row per profile in the given order
// with its full name, its kind and the speed and angle of each of the ten points. Comma-separated
// with CRLF line ends, a field with a comma, a quote or a line break in quotes (RFC 4180), in
// UTF-8 behind a byte-order mark so that spreadsheet programs read the names' umlauts right;
// numbers are whole, in every language. The header is translated in the "ProfileComparison"
// context.
QByteArray comparisonCsv(const std::vector<Profile> &profiles);

// One difference between two device images on one line, old value before the arrow, in the
// editor's names: "Slot 3: 3000 rpm, 25° → 3200 rpm, 26°", "Ignition voltage: 200 V → 220 V". The
// library names motorbike types by their templates; without it they go by number. Translated
// in the "ProfileComparison" context.
QString differenceText(const ImageDifference &difference, const DefaultLibrary *library = nullptr);
