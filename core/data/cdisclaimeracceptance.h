#pragma once

#include <QString>

// The file "disclaimer.a" that remembers that the user accepted the disclaimer for good. It lives
// in the user's own application data folder, never beside the program: one user's answer is not
// another's, and a program run once as administrator must not answer for everyone.
class CDisclaimerAcceptance
{
public:
    static const char kFileName[];

    explicit CDisclaimerAcceptance(const QString &userDirectory);

    // True when the file holds a positive integer. A missing, empty or foreign file means
    // that the disclaimer has not been accepted yet.
    bool isAccepted() const;
    // Silent when the folder cannot be written: the disclaimer is then simply shown again at the
    // next start.
    void writeAccepted() const;

private:
    const QString m_userDirectory;
};
