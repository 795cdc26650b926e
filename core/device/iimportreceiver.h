#pragma once

class Profile;

// Takes the profile an import read from the CDI: the main window opens it in the editor, the
// command-line tool saves it.
class IImportReceiver
{
public:
    virtual ~IImportReceiver() = default;
    virtual void acceptImportedProfile(const Profile &profile) = 0;
};
