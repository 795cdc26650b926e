#include "pages/cprofileitem.h"

CProfileItem::CProfileItem(const Profile &profile)
    : m_profile(profile)
{
    retranslate();
}

void CProfileItem::retranslate()
{
    const QString kind = m_profile.isCustom() ? tr("Custom") : tr("Default");
    setText(kind + QLatin1String(": ") + m_profile.name());
}
