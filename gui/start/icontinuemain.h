#pragma once

class ContinueForm;

// The start page as its "continue" panels see it.
class IContinueMain
{
public:
    virtual ~IContinueMain() = default;
    // The panel's button was pressed.
    virtual void onContinueRequested(ContinueForm &panel) = 0;
};
