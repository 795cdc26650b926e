#include "editor/cprofileedit.h"

#include <utility>

CProfileEdit::CProfileEdit(const QString &name, const Profile &before, const Profile &after, Apply apply)
    : QUndoCommand(name)
    , m_before(before)
    , m_after(after)
    , m_apply(std::move(apply))
{ }

void CProfileEdit::undo()
{
    m_apply(m_before);
    m_done = false;
}

void CProfileEdit::redo()
{
    if (!m_done)
        m_apply(m_after);
    m_done = true;
}
