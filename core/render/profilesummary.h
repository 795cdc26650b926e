#pragma once

#include <QString>

class Profile;

// The texts of the summary page, translated in the "SummaryForm" context.

// One rich-text line with the voltage, side stand, pick-up edge and sensor advance, the
// parts separated by grey bars.
QString summaryStatusLine(const Profile &profile);

// K0 with one decimal place and the degree sign, as every summary shows it.
QString sensorAdvanceText(const Profile &profile);
