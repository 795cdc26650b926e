#pragma once

#include "profile/profile.h"

#include <QListWidgetItem>

// One entry of the comparison list. It keeps its own copy of the profile and reads
// "Default: name" or "Custom: name", in full in its tool tip. Its check box says whether the
// graph shows the profile; its sample of line shows the colour and line style the profile has
// in the graph, in the legend and in the value table.
class CProfileItem : public QListWidgetItem
{
public:
    CProfileItem(const Profile &profile, int paletteIndex);

    const Profile &profile() const { return m_profile; }
    int paletteIndex() const { return m_paletteIndex; }
    bool isShown() const { return checkState() == Qt::Checked; }
    // Sets the text again in the language now installed.
    void retranslate();

    // A piece of line in the palette entry's colour and style, for lists and headings.
    static QIcon sample(int paletteIndex);

private:
    const Profile m_profile;
    const int m_paletteIndex;
};
