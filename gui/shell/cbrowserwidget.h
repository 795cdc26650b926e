#pragma once

// A page of the main window. The main window tells it when it becomes or stops being the page
// shown, and hands it the Back and Next buttons while it is; the page decides where to go and
// asks the main window through IBrowserMain.
class CBrowserWidget
{
public:
    virtual ~CBrowserWidget() = default;

    // True while this page is the one shown; a page shows or hides itself accordingly.
    virtual void setActive(bool active) = 0;
    virtual void onBack() = 0;
    virtual void onNext() = 0;
};
