#pragma once

#include "shell/cbrowserwidget.h"
#include "shell/itranslatable.h"

#include <QWidget>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace Ui {
class WizardForm;
}
class CBridgeWatch;
class CLanguageSwitcher;
class ComparisonForm;
class DefaultLibrary;
class DefaultProfilesGui;
class Profile;
class QListWidgetItem;
class MultiGraphForm;
struct PlottedMap;

// The start page. Its views lead to everything the program does: the main choices, the ways to
// get a profile into the editor, the ways to program the CDI, the template chooser and the
// comparison with its common graph. Two panels offer to go on with the profile last edited.
class WizardForm : public QWidget, public CBrowserWidget, public ITranslatable
{
    Q_OBJECT

public:
    enum class View
    {
        Main,
        EditProfiles,
        Programming,
        Template,
        Comparison,
        Graph
    };

    // What Next does with the template chosen on the template view.
    static constexpr int kCreateCustom = 0;
    static constexpr int kProgramTemplate = 1;
    static constexpr int kAddToComparison = 2;

    // The template chooser (over the library, which may be null), the comparison list and its
    // graph are views of this page. They are built when first shown, so that the start page
    // comes up without them; the list and the graph then live for the rest of the run.
    WizardForm(CLanguageSwitcher &switcher, const DefaultLibrary *library, QWidget *parent = nullptr);
    ~WizardForm() override;

    // The name of the profile the editor holds, offered by the continue panels; nothing while
    // the editor holds none.
    void setEditedProfileName(const std::optional<QString> &name);

    void showMainChoices();
    void showProgrammingChoices();
    // Back on the template view goes to the view that asks for the mode, or calls back when
    // given: the template chooser reached by the menu returns where the user was.
    void showTemplateChoice(int mode, std::function<void()> back = nullptr);
    void showView(View view);
    View view() const { return m_view; }
    // The comparison's graph while its view shows; null otherwise.
    MultiGraphForm *shownGraph() const { return m_view == View::Graph ? m_graph : nullptr; }
    // The line on the CDI's bridge in the main view, for the device flow to keep informed.
    CBridgeWatch &bridgeWatch();
    int templateMode() const { return m_templateMode; }

    // CBrowserWidget
    void setActive(bool active) override;
    void onBack() override;
    void onNext() override;

    // ITranslatable
    void retranslate(int language) override;

signals:
    // The buttons below the page and the prompt above it changed with the view.
    void buttonsChanged(const PageButtons &buttons);
    void promptChanged();
    // Another view shows.
    void viewChanged();
    // A template chosen to become the user's own profile in the editor.
    void editorRequested(const Profile &profile);
    // A template chosen to be programmed into the CDI.
    void programmingRequested(const Profile &profile);
    // A saved profile to open in the editor, or to program.
    void openFileRequested();
    void programFileRequested();
    void recentProfileRequested(const QString &path);
    // The continue panels: back to the editor, or program what it holds.
    void continueEditingRequested();
    void programEditedRequested();
    void connectionTestRequested();
    void importRequested();

public slots:
    void onEditProfilesButton();
    void onCalibrationSelectionButton();
    void onTestConnectionButton();
    void onCompareButton();
    void onImportFromCDIButton();
    void onCreateFromTemplateButton();
    void onLoadFileButton();
    void onCalibrateCustomButton();
    void onCalibrateDefaultButton();
    void onSwitchedLanguage(int index);
    void onRecentClicked(QListWidgetItem *item);

private:
    DefaultProfilesGui &templates();
    ComparisonForm &comparison();
    MultiGraphForm &graph();
    void applyFrame();
    QString prompt() const;
    void markUpToolTips();
    void updateContinuePanels();
    void updateRecentList();
    void showComparisonGraph(const std::vector<PlottedMap> &maps);

    std::unique_ptr<Ui::WizardForm> m_ui;
    CLanguageSwitcher &m_switcher;
    const DefaultLibrary *m_library;
    // Children of their views once built.
    DefaultProfilesGui *m_templates = nullptr;
    ComparisonForm *m_comparison = nullptr;
    MultiGraphForm *m_graph = nullptr;
    std::optional<QString> m_editedProfileName;
    View m_view = View::Main;
    View m_backView = View::Main;
    int m_templateMode = kCreateCustom;
    std::function<void()> m_templateBack;
    bool m_active = false;
};
