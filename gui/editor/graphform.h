#pragma once

#include <QWidget>

#include <memory>
#include <optional>

class CHintLabel;
class IProfileEditorMain;
class MapPlotter;
class Profile;
struct MapValidation;

namespace Ui {
class GraphForm;
}

// The editor's graph of the ignition map. It shows the image its plotter draws on every data
// change and turns the mouse into point selection and dragging; a drag snaps the speed to
// 50 rpm and keeps the angle under the template's ceiling.
class GraphForm : public QWidget
{
    Q_OBJECT

public:
    explicit GraphForm(IProfileEditorMain *editor, QWidget *parent = nullptr);
    ~GraphForm() override;

    // Shows the editor's working profile with a selected point (-1 for none) and repaints at once.
    void showProfile(Profile *profile, int selected, bool rescale, const MapValidation *validation = nullptr);
    void redraw(bool rescale);

    // The floating "Drag points to edit" label is placed over the graph, centred.
    void setHintLabel(CHintLabel *label);
    void hideHintLabel();

    const MapPlotter &plotter() const { return *m_plotter; }
    int selectedIndex() const { return m_selected; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void press(const QPoint &position);
    void dragTo(const QPoint &position);
    void finishDrag();
    // The description screen readers give for the graph: the points and what breaks a limit.
    void describe(const MapValidation *validation = nullptr);
    // The arrow keys: a degree up or down, a speed step left or right.
    bool moveSelectedPoint(int key);
    void centreHintLabel();

    std::unique_ptr<Ui::GraphForm> m_ui;
    IProfileEditorMain *m_editor;
    std::unique_ptr<MapPlotter> m_plotter;
    Profile *m_profile = nullptr;
    int m_selected = -1;
    bool m_dragging = false;
    bool m_moved = false;
    // Where the press was, and the pressed point's speed, which a drag keeps until the pointer
    // clearly moves sideways.
    QPoint m_pressPixel;
    int m_pressRpm = 0;
    bool m_sideways = false;
    // The pointer over the graph, whose speed and angle are shown; none while it is outside.
    std::optional<QPoint> m_pointer;
    CHintLabel *m_hintLabel = nullptr;
};
