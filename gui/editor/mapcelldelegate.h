#pragma once

#include <QStyledItemDelegate>

// The editor of a map table cell. Qt shows it as a text field of its own, outside the table, so
// it carries what the cell means as its accessible name ("Angle at 5000 RPM, degrees") and the
// checker's message as its description: typing into it keeps the row, the column and the unit.
class MapCellDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QWidget *createEditor(
        QWidget *parent, const QStyleOptionViewItem &option, const QModelIndex &index) const override;

    // The words for the cell at the index: its column, its point and its unit.
    static QString cellName(const QModelIndex &index);
};
