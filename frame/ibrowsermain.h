#pragma once

#include <QString>

class Profile;

// The main window as the pages see it: every page change is a request to it.
class IBrowserMain
{
public:
    virtual ~IBrowserMain() = default;

    // The start page with its main choices.
    virtual void start() = 0;
    // Visibility of Exit, Back and Next, Next's enabled state, text and tool tip.
    virtual void setButtonState(bool exitVisible, bool backVisible, bool nextVisible, bool nextEnabled,
                                const QString &nextText, const QString &nextToolTip)
        = 0;
    // The editor with a copy of the profile.
    virtual void showEditor(const Profile &profile) = 0;
    // The confirmation page before programming the CDI with the profile.
    virtual void showProgrammingConfirmation(const Profile &profile) = 0;
    virtual void showPortSelection() = 0;
    virtual void showProgress() = 0;
    // Asks the editor whether its profile may be left; true when there is nothing to lose.
    virtual bool mayLeaveEditor() = 0;
    virtual void setNextEnabled(bool enabled) = 0;
    // Device requests.
    virtual void requestProgramming(const Profile &profile, bool allowReimport) = 0;
    virtual void requestConnectionTest() = 0;
    virtual void requestImport() = 0;
};
