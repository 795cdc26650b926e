#pragma once

#include "profile/profile.h"

#include <QListWidgetItem>

// One entry of the comparison list. It keeps its own copy of the profile and reads
// "Default: name" or "Custom: name".
class CProfileItem : public QListWidgetItem
{
public:
    explicit CProfileItem(const Profile &profile);

    const Profile &profile() const { return m_profile; }
    // Sets the text again in the language now installed.
    void retranslate();

private:
    const Profile m_profile;
};
