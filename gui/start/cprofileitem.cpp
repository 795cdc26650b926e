#include "start/cprofileitem.h"

#include "profile/profilecomparison.h"

CProfileItem::CProfileItem(const Profile &profile)
    : m_profile(profile)
{
    retranslate();
}

void CProfileItem::retranslate()
{
    setText(profileListText(m_profile));
}
