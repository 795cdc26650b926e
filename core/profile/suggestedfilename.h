#pragma once

#include <QString>

// The file name (without extension) that Save as and Print PDF suggest for a profile: its name
// with every character that Windows or Linux refuse in a file name replaced by "_", trimmed of
// the blanks and dots that Windows drops at either end, kept clear of the names Windows reserves
// for devices and short enough for any file system. When nothing is left, the fallback is used.
QString suggestedFileName(const QString &profileName, const QString &fallback);
