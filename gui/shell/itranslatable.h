#pragma once

// A part of the user interface that sets its visible texts again after a language switch.
class ITranslatable
{
public:
    virtual ~ITranslatable() = default;
    // Called for every switch, also when the language stays the same.
    virtual void retranslate(int language) = 0;
};
