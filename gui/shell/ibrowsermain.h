#pragma once

#include "profile/profile.h"

#include <QString>

#include <optional>

// The main window as the pages see it: every page change is a request to it.
class IBrowserMain
{
public:
    virtual ~IBrowserMain() = default;

    // The start page with its main choices.
    virtual void showStart() = 0;
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

    // What the start and comparison pages need besides. They have neutral defaults, so that a
    // page that only navigates can be tested with a main window that implements the above.

    // Back to the editor with the profile it holds.
    virtual void continueEditing() { }
    // The editor's working profile; null while no profile was loaded in this run.
    virtual const Profile *editedProfile() const { return nullptr; }
    // The open dialog and its messages; nothing when the user cancelled or the file was unreadable.
    virtual std::optional<Profile> readProfileFromFile() { return std::nullopt; }
    // Asks whether the CDI may give the profile back later, then programs it.
    virtual void confirmProgramming(const Profile &profile) { requestProgramming(profile, false); }
    // The current page changed its prompt (its status tip) without a page change.
    virtual void refreshPrompt() { }
    // Opens a recently used profile file in the editor, after the unsaved-changes question.
    virtual void openRecentProfile(const QString &path) { Q_UNUSED(path) }
};

// The main window as the progress page sees it.
class IBrowserSub
{
public:
    virtual ~IBrowserSub() = default;

    // The transaction shown on the progress page has ended, successfully or not.
    virtual void onTransactionFinished() = 0;
};
