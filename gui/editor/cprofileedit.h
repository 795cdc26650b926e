#pragma once

#include "profile/profile.h"

#include <QUndoCommand>

#include <functional>

// One step in the editor's history: the whole profile before and after it. A snapshot is small
// and makes every kind of change, a reset included, undoable the same way.
class CProfileEdit : public QUndoCommand
{
public:
    using Apply = std::function<void(const Profile &)>;

    CProfileEdit(const QString &name, const Profile &before, const Profile &after, Apply apply);

    void undo() override;
    void redo() override;

private:
    const Profile m_before;
    const Profile m_after;
    const Apply m_apply;
    // The change is already in the profile when the step is pushed.
    bool m_done = true;
};
