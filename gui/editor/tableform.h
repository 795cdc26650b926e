#pragma once

#include <QWidget>

#include <memory>

class CHintLabel;
class IProfileEditorMain;
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
// current row is the point selected in the graph too.
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

protected:
    void changeEvent(QEvent *event) override;

private slots:
    void onTableRowChanged(const QModelIndex &current, const QModelIndex &previous);
    void onTableEdited(QStandardItem *item);
    void onSortButtonClicked();

private:
    void setCellText(int row, int column, const QString &text);
    void setHeaderTexts();
    void fitColumns();

    std::unique_ptr<Ui::TableForm> m_ui;
    IProfileEditorMain *m_editor;
    QStandardItemModel *m_model;
    CHintLabel *m_hintLabel = nullptr;
    // Set while the form writes into its own model, so that the model's change signals are not
    // taken for the user's edits. Saved and restored, never simply cleared, so nesting is safe.
    bool m_updating = false;
    Profile *m_profile = nullptr;
};
