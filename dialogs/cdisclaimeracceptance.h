#pragma once

#include <QString>

// The file "disclaimer.a" that remembers that the user accepted the disclaimer for good. It is
// kept next to the program; an installed program cannot write there, so the user's own
// application data folder takes it instead. Either place counts when reading.
class CDisclaimerAcceptance
{
public:
    static const char kFileName[];

    CDisclaimerAcceptance(const QString &programDirectory, const QString &userDirectory);

    // True when either file holds a positive integer. A missing, empty or foreign file means
    // that the disclaimer has not been accepted yet.
    bool isAccepted() const;
    // Silent when neither place can be written: the disclaimer is then simply shown again at the
    // next start.
    void writeAccepted() const;

private:
    const QString m_programDirectory;
    const QString m_userDirectory;
};
