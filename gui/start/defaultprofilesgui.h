#pragma once

#include <QWidget>

#include <memory>
#include <optional>

namespace Ui {
class DefaultProfilesGui;
}
class CLanguageSwitcher;
class DefaultLibrary;
class Profile;
class MapPlotter;

// The template chooser: a drop-down of the factory profiles by name, with the chosen template's
// information text in the language of the moment and a preview of its map below it.
class DefaultProfilesGui : public QWidget
{
    Q_OBJECT

public:
    DefaultProfilesGui(CLanguageSwitcher &switcher, const DefaultLibrary *library, QWidget *parent = nullptr);
    ~DefaultProfilesGui() override;

    bool hasProfiles() const;
    // A copy of the chosen template; nothing when the library holds none.
    std::optional<Profile> selectedProfile() const;
    void retranslate();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private slots:
    void onComboBoxSelected(int index);

private:
    void showInformation();
    void drawPreview();

    std::unique_ptr<Ui::DefaultProfilesGui> m_ui;
    CLanguageSwitcher &m_switcher;
    const DefaultLibrary *m_library;
    std::unique_ptr<MapPlotter> m_plotter;
    int m_selected = -1;
};
