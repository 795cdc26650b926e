#include "shell/caccessibility.h"

#include "render/bracemarkup.h"

#include <QAccessibleWidget>
#include <QApplication>
#include <QLabel>
#include <QTextDocumentFragment>
#include <QWidget>

#include <functional>

namespace CAccessibility {

namespace {

const char kRoleProperty[] = "accessibleRole";

// A widget with a role of its own; a heading label keeps its text as its name.
class CRoleAccessible : public QAccessibleWidget
{
public:
    CRoleAccessible(QWidget *widget, QAccessible::Role role)
        : QAccessibleWidget(widget, role)
    { }

    QString text(QAccessible::Text kind) const override
    {
        const QString own = QAccessibleWidget::text(kind);
        if (kind != QAccessible::Name || !own.isEmpty())
            return own;
        if (const auto *label = qobject_cast<const QLabel *>(widget())) {
            const QString text = label->textFormat() == Qt::PlainText
                ? label->text()
                : QTextDocumentFragment::fromHtml(label->text()).toPlainText();
            return text.simplified();
        }
        return own;
    }
};

QAccessibleInterface *roleFactory(const QString &className, QObject *object)
{
    // Asked once per class up the hierarchy: only the widget's own class answers.
    if (!object || !object->isWidgetType() || className != QLatin1String(object->metaObject()->className()))
        return nullptr;
    const QString role = object->property(kRoleProperty).toString();
    if (role == QLatin1String("heading"))
        return new CRoleAccessible(static_cast<QWidget *>(object), QAccessible::Heading);
    if (role == QLatin1String("graphic"))
        return new CRoleAccessible(static_cast<QWidget *>(object), QAccessible::Graphic);
    return nullptr;
}

void visit(QAccessibleInterface *iface, const std::function<void(QAccessibleInterface *)> &action, int depth)
{
    if (!iface || !iface->isValid() || depth > 40)
        return;
    action(iface);
    const int count = iface->childCount();
    for (int i = 0; i < count; ++i)
        visit(iface->child(i), action, depth + 1);
}

void visitAll(const std::function<void(QAccessibleInterface *)> &action)
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows)
        visit(QAccessible::queryAccessibleInterface(window), action, 0);
}

} // namespace

void installRoles()
{
    static bool installed = false;
    if (!installed)
        QAccessible::installFactory(roleFactory);
    installed = true;
}

void setDescription(QWidget *widget, const QString &description)
{
    if (widget && widget->accessibleDescription() != description)
        widget->setAccessibleDescription(description);
}

void setMarkedToolTip(QWidget *widget, const QString &braceText)
{
    if (!widget)
        return;
    widget->setToolTip(withBraceMarkup(braceText));
    QString plain = braceText;
    plain.remove(QLatin1Char('{')).remove(QLatin1Char('}'));
    setDescription(widget, plain);
}

TextSnapshot TextSnapshot::take()
{
    TextSnapshot snapshot;
    if (!QAccessible::isActive())
        return snapshot;
    visitAll([&snapshot](QAccessibleInterface *iface) {
        snapshot.m_texts.insert(QAccessible::uniqueId(iface),
            qMakePair(iface->text(QAccessible::Name), iface->text(QAccessible::Description)));
    });
    return snapshot;
}

void TextSnapshot::announceChanges() const
{
    if (m_texts.isEmpty() || !QAccessible::isActive())
        return;
    visitAll([this](QAccessibleInterface *iface) {
        const auto before = m_texts.constFind(QAccessible::uniqueId(iface));
        if (before == m_texts.constEnd())
            return;
        if (iface->text(QAccessible::Name) != before->first) {
            QAccessibleEvent nameChanged(iface, QAccessible::NameChanged);
            QAccessible::updateAccessibility(&nameChanged);
        }
        if (iface->text(QAccessible::Description) != before->second) {
            QAccessibleEvent descriptionChanged(iface, QAccessible::DescriptionChanged);
            QAccessible::updateAccessibility(&descriptionChanged);
        }
    });
}

} // namespace CAccessibility
