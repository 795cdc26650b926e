#pragma once

#include <QWidget>

#include <memory>

class CHintLabel;
class IgnitionMap;
class IProfileEditorMain;
class QAction;
struct MapValidation;
class Profile;
class QModelIndex;
class QStandardItem;
class QStandardItemModel;

namespace Ui {
class TableForm;
}

// The editor's table of the ten map points. What the user types is stored as typed (the graph
// shows what is out of range); text that is no number falls back to the previous value. The
// current row is the point selected in the graph too. It works like a spreadsheet: a range of
// cells is selected with the mouse or Shift+arrows, copied as tab-separated text and pasted from
// a spreadsheet or a text editor, and the selected angles can be raised, lowered, set or
// interpolated; each such change is one step to undo. Return moves to the next row.
class TableForm : public QWidget
{
    Q_OBJECT

public:
    explicit TableForm(IProfileEditorMain *editor, QWidget *parent = nullptr);
    ~TableForm() override;

    // Shows the editor's working profile; the form writes its edits straight into it.
    void setProfile(Profile *profile);
    // The row of the table's current index, -1 when there is none.
    int currentRow() const;
    // Selects the point the graph picked, without reporting the selection back.
    void selectRow(int row);
    // Marks the cells the checker finds fault with, each with the checker's message as its tool
    // tip.
    void showValidation(const MapValidation &validation);

    // The floating "Click to edit" label is placed over the table, centred.
    void setHintLabel(CHintLabel *label);
    void hideHintLabel();
    void centreHintLabel();

    void retranslate();

    // The selection's cells as tab-separated text, rows in order.
    QString selectedText() const;
    // Puts the text's block of whole numbers into the map from the current cell on; a block that
    // does not fit or holds anything else changes nothing, and the user is told why.
    bool paste(const QString &text);
    // Adds degrees to the angles of the selected rows.
    void addDegrees(int degrees);
    // Sets every selected cell to the value.
    void setSelectedCells(int value);
    // The angles between the first and the last selected row, on the straight line between them
    // over the speeds.
    void interpolateSelectedAngles();

protected:
    void changeEvent(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private slots:
    void onTableRowChanged(const QModelIndex &current, const QModelIndex &previous);
    void onTableEdited(QStandardItem *item);
    void onSortButtonClicked();
    void onCopy();
    void onPaste();
    void onRaise();
    void onLower();
    void onSetValue();
    void onInterpolate();

private:
    void createActions();
    void setTexts();
    // The selected rows, first to last, and the range of selected columns.
    QList<int> selectedRows() const;
    QPair<int, int> selectedColumns() const;
    void applyMap(const IgnitionMap &map, int editKind);
    void setCellText(int row, int column, const QString &text);
    void setHeaderTexts();
    void fitColumns();
    // Tells a screen reader that the keyboard is in the current cell again.
    void announceCurrentCell();

    std::unique_ptr<Ui::TableForm> m_ui;
    IProfileEditorMain *m_editor;
    QStandardItemModel *m_model;
    CHintLabel *m_hintLabel = nullptr;
    QAction *m_copy = nullptr;
    QAction *m_paste = nullptr;
    QAction *m_raise = nullptr;
    QAction *m_lower = nullptr;
    QAction *m_setValue = nullptr;
    QAction *m_interpolate = nullptr;
    // Set while the form writes into its own model, so that the model's change signals are not
    // taken for the user's edits. Saved and restored, never simply cleared, so nesting is safe.
    bool m_updating = false;
    Profile *m_profile = nullptr;
};
