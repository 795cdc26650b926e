#pragma once

#include "shell/cbrowserwidget.h"
#include "shell/itranslatable.h"
#include "start/ccomparisonparent.h"
#include "start/icontinuemain.h"

#include <QWidget>

#include <functional>
#include <memory>

namespace Ui {
class WizardForm;
}
class CBridgeWatch;
class CLanguageSwitcher;
class ComparisonForm;
class DefaultLibrary;
class DefaultProfilesGui;
class IBrowserMain;
class QListWidgetItem;
class MultiGraphForm;

// The start page. Its views lead to everything the program does: the main choices, the ways to
// get a profile into the editor, the ways to program the CDI, the template chooser and the
// comparison with its common graph. Two panels offer to go on with the profile last edited.
class WizardForm : public QWidget,
                   public CBrowserWidget,
                   public IContinueMain,
                   public ITranslatable,
                   public CComparisonParent
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

    void setBrowserMain(IBrowserMain *main);

    void showMainChoices();
    void showProgrammingChoices();
    // Back on the template view goes to the view that asks for the mode, or calls back when
    // given: the template chooser reached by the menu returns where the user was.
    void showTemplateChoice(int mode, std::function<void()> back = nullptr);
    void showView(View view);
    View view() const { return m_view; }
    // The line on the CDI's bridge in the main view, for the device flow to keep informed.
    CBridgeWatch &bridgeWatch();
    int templateMode() const { return m_templateMode; }

    // CBrowserWidget
    void setActive(bool active) override;
    void onBack() override;
    void onNext() override;

    // IContinueMain
    void onContinueRequested(ContinueForm &panel) override;

    // ITranslatable
    void retranslate(int language) override;

    // CComparisonParent
    void chooseTemplateForComparison() override;
    void showComparisonGraph(const std::vector<Profile> &profiles) override;

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

    std::unique_ptr<Ui::WizardForm> m_ui;
    CLanguageSwitcher &m_switcher;
    const DefaultLibrary *m_library;
    // Children of their views once built.
    DefaultProfilesGui *m_templates = nullptr;
    ComparisonForm *m_comparison = nullptr;
    MultiGraphForm *m_graph = nullptr;
    IBrowserMain *m_main = nullptr;
    View m_view = View::Main;
    View m_backView = View::Main;
    int m_templateMode = kCreateCustom;
    std::function<void()> m_templateBack;
    bool m_active = false;
};
