#pragma once

#include <QAccessible>
#include <QHash>
#include <QPair>
#include <QString>

class QWidget;

// What screen readers learn beyond what Qt tells them by itself.
//
// Roles: a widget whose dynamic property "accessibleRole" is "heading" reads as a heading (its
// text as the name), one with "graphic" as an image (its accessible name and description).
// Forms set the property in Designer; installRoles() must run before the first window shows.
namespace CAccessibility {

void installRoles();

// Sets a widget's accessible description, which Qt announces when it changes.
void setDescription(QWidget *widget, const QString &description);

// Tool tips marked with braces (see withBraceMarkup()) are rich text; screen readers get their
// words plain as the description.
void setMarkedToolTip(QWidget *widget, const QString &braceText);

// The accessible names and descriptions of every window, to tell after a language switch which
// of them changed. Qt announces a changed label or button text itself, but not a retranslated
// tool tip, tab, header, window title or menu entry; a screen reader that keeps what it was
// told would go on reading the old language.
class TextSnapshot
{
public:
    // Empty while no screen reader listens: there is nothing to announce to.
    static TextSnapshot take();
    // Announces every name and description that differs now from the snapshot.
    void announceChanges() const;
    bool isEmpty() const { return m_texts.isEmpty(); }

private:
    QHash<QAccessible::Id, QPair<QString, QString>> m_texts;
};

} // namespace CAccessibility
