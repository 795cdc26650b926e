#pragma once

#include <QWidget>

#include <functional>
#include <memory>

class HintDialog;
class IProfileEditorMain;
class Profile;
struct ProfileFlags;

namespace Ui {
class FlagsForm;
}

// The profile's settings beside the map: ignition voltage, pick-up edge, side-stand monitoring
// with its polarity, and the sensor advance. Every control writes straight into the editor's
// working profile; the edge and the sensor advance move the map's ceiling, so those ask the
// editor to redraw the graph. Each group's hint button opens its help text.
class FlagsForm : public QWidget
{
    Q_OBJECT

public:
    FlagsForm(IProfileEditorMain *editor, HintDialog *hintDialog, QWidget *parent = nullptr);
    ~FlagsForm() override;

    // Fills every control from the editor's working profile; filling changes nothing in it.
    void setProfile(Profile *profile);

    // The numbers of the hints behind the four hint buttons.
    static constexpr int kVoltageHint = 0;
    static constexpr int kSideStandHint = 1;
    static constexpr int kPickUpHint = 2;
    static constexpr int kSensorAdvanceHint = 3;

protected:
    void changeEvent(QEvent *event) override;

private slots:
    void onVoltageEdited(int volts);
    void onSensorAdvanceEdited(double degrees);
    void onSideStandBlockingEdited(int state);

private:
    // True for a change the user made, false while the form fills its own controls.
    bool isUserEdit() const { return !m_loading && m_profile; }
    // A user's change of the flags, written when it changes them; true when it did.
    bool changeFlags(const std::function<void(ProfileFlags &)> &change);
    void applySideStandRule();

    std::unique_ptr<Ui::FlagsForm> m_ui;
    IProfileEditorMain *m_editor;
    HintDialog *m_hintDialog;
    Profile *m_profile = nullptr;
    // Set while the form fills its own controls, so that their change signals write nothing.
    bool m_loading = false;
};
