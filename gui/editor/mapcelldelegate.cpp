#include "editor/mapcelldelegate.h"

QWidget *MapCellDelegate::createEditor(
    QWidget *parent, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    QWidget *editor = QStyledItemDelegate::createEditor(parent, option, index);
    if (editor) {
        editor->setAccessibleName(cellName(index));
        editor->setAccessibleDescription(index.data(Qt::ToolTipRole).toString());
    }
    return editor;
}

QString MapCellDelegate::cellName(const QModelIndex &index)
{
    if (!index.isValid())
        return QString();
    const int point = index.row() + 1;
    if (index.column() == 0)
        return tr("RPM of point %1").arg(point);
    const QString rpm = index.sibling(index.row(), 0).data().toString();
    return tr("Angle at %1 RPM, degrees (point %2)").arg(rpm).arg(point);
}
