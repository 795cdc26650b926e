#pragma once

#include <QString>

// The buttons below the pages, as the page shown wants them.
struct PageButtons
{
    bool exitVisible = true;
    bool backVisible = true;
    bool nextVisible = false;
    bool nextEnabled = false;
    QString nextText;
    QString nextToolTip;
};

// A page of the main window. The main window tells it when it becomes or stops being the page
// shown, and hands it the Back and Next buttons while it is; the page decides what they mean and
// tells the main window by its signals where to go.
class CBrowserWidget
{
public:
    virtual ~CBrowserWidget() = default;

    // True while this page is the one shown; a page shows or hides itself accordingly.
    virtual void setActive(bool active) = 0;
    virtual void onBack() = 0;
    virtual void onNext() = 0;
};
