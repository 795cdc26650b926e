#pragma once

#include "frame/cbrowserwidget.h"
#include "i18n/itranslatable.h"
#include "pages/ccomparisonparent.h"
#include "pages/icontinuemain.h"

#include <QWidget>

#include <functional>
#include <memory>

namespace Ui {
class WizardForm;
}
class ComparisonForm;
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

    // The template chooser, the comparison list and its graph become views of this page.
    WizardForm(std::unique_ptr<DefaultProfilesGui> templates, std::unique_ptr<ComparisonForm> comparison,
        std::unique_ptr<MultiGraphForm> graph, QWidget *parent = nullptr);
    ~WizardForm() override;

    void setBrowserMain(IBrowserMain *main);

    void showMainChoices();
    void showProgrammingChoices();
    // Back on the template view goes to the view that asks for the mode, or calls back when
    // given: the template chooser reached by the menu returns where the user was.
    void showTemplateChoice(int mode, std::function<void()> back = nullptr);
    void showView(View view);
    View view() const { return m_view; }
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
    void applyFrame();
    QString prompt() const;
    void markUpToolTips();
    void updateContinuePanels();
    void updateRecentList();

    std::unique_ptr<Ui::WizardForm> m_ui;
    DefaultProfilesGui *m_templates;
    ComparisonForm *m_comparison;
    MultiGraphForm *m_graph;
    IBrowserMain *m_main = nullptr;
    View m_view = View::Main;
    View m_backView = View::Main;
    int m_templateMode = kCreateCustom;
    std::function<void()> m_templateBack;
    bool m_active = false;
};
