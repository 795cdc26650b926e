#pragma once

#include <QString>

// The editor page as its child widgets see it. The table, the graph and the name and notes
// forms write into the editor's working profile and then report here; the editor refreshes the
// other children. Children never talk to each other.
class IProfileEditorMain
{
public:
    virtual ~IProfileEditorMain() = default;

    // The graph shows the working profile with the table's current row selected, refitted.
    virtual void updateGraph() = 0;
    virtual void setProfileName(const QString &name) = 0;
    virtual void setProfileNotes(const QString &notes) = 0;
    // The map was changed by a child; rescale refits the graph's axes (false while dragging).
    virtual void onMapChanged(bool rescale) = 0;
    // A child selected a point; the table and the graph both show it.
    virtual void onPointSelected(int index, bool rescale) = 0;

    // A finished change, one step of the history: a cell (point is its row), a drag (once, on
    // release), a sort, a setting, a paste or an operation on the selection (point -1).
    enum class Edit
    {
        Cell,
        Drag,
        Sort,
        Setting,
        Paste,
        // Degrees added, a value set or angles interpolated over the selected cells.
        Operation
    };
    virtual void onEdited(Edit edit, int point) = 0;
};
