#include "shell/groupshortcut.h"

#include <QEvent>
#include <QGroupBox>
#include <QPointer>

namespace {

class CGroupShortcut : public QObject
{
public:
    CGroupShortcut(QGroupBox *box, QWidget *input)
        : QObject(box)
        , m_input(input)
    {
        box->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() != QEvent::Shortcut || !m_input || !m_input->isEnabled())
            return QObject::eventFilter(watched, event);
        m_input->setFocus(Qt::ShortcutFocusReason);
        return true;
    }

private:
    QPointer<QWidget> m_input;
};

} // namespace

void sendGroupShortcutTo(QGroupBox *box, QWidget *input)
{
    new CGroupShortcut(box, input); // owned by the box
}
