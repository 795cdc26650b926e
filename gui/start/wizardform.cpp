#include "start/wizardform.h"

#include "profile/profile.h"
#include "profile/recentprofiles.h"
#include "render/mapplotter.h"
#include "render/bracemarkup.h"
#include "shell/caccessibility.h"
#include "start/bridgestatelabel.h"
#include "start/comparisonform.h"
#include "start/continueform.h"
#include "start/defaultprofilesgui.h"
#include "start/multigraphform.h"

#include "ui_wizardform.h"

#include <QFileInfo>
#include <QListWidget>
#include <QLocale>

namespace {

// The choice buttons show their icons larger than menus and tool bars do; the sharper drawing
// made for high-resolution screens serves for that.
QIcon choiceIcon(const char *name)
{
    QImage image(QStringLiteral(":/Images/%1@2x.png").arg(QLatin1String(name)));
    image.setDevicePixelRatio(1.0);
    return QIcon(QPixmap::fromImage(image));
}

} // namespace

WizardForm::WizardForm(CLanguageSwitcher &switcher, const DefaultLibrary *library, QWidget *parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::WizardForm>())
    , m_switcher(switcher)
    , m_library(library)
{
    m_ui->setupUi(this);
    connect(m_ui->editContinueForm, &ContinueForm::continueRequested, this, &WizardForm::continueEditingRequested);
    connect(m_ui->programmingContinueForm, &ContinueForm::continueRequested, this,
        &WizardForm::programEditedRequested);
    markUpToolTips();
    const std::pair<QPushButton *, const char *> icons[] = {
        {m_ui->editProfilesButton, "continue"},
        {m_ui->calibrationSelectionButton, "usb-write"},
        {m_ui->testConnectionButton, "ok2"},
        {m_ui->compareButton, "www-tech"},
        {m_ui->createFromTemplateButton, "new"},
        {m_ui->loadFileButton, "load"},
        {m_ui->importFromCDIButton, "usb-read"},
        {m_ui->calibrateCustomButton, "load"},
        {m_ui->calibrateDefaultButton, "new"},
    };
    for (const auto &[button, icon] : icons)
        button->setIcon(choiceIcon(icon));

    connect(m_ui->editProfilesButton, &QPushButton::clicked, this, &WizardForm::onEditProfilesButton);
    connect(m_ui->recentList, &QListWidget::itemClicked, this, &WizardForm::onRecentClicked);
    connect(m_ui->calibrationSelectionButton, &QPushButton::clicked, this,
        &WizardForm::onCalibrationSelectionButton);
    connect(m_ui->testConnectionButton, &QPushButton::clicked, this, &WizardForm::onTestConnectionButton);
    connect(m_ui->compareButton, &QPushButton::clicked, this, &WizardForm::onCompareButton);
    connect(m_ui->importFromCDIButton, &QPushButton::clicked, this, &WizardForm::onImportFromCDIButton);
    connect(
        m_ui->createFromTemplateButton, &QPushButton::clicked, this, &WizardForm::onCreateFromTemplateButton);
    connect(m_ui->loadFileButton, &QPushButton::clicked, this, &WizardForm::onLoadFileButton);
    connect(m_ui->calibrateCustomButton, &QPushButton::clicked, this, &WizardForm::onCalibrateCustomButton);
    connect(m_ui->calibrateDefaultButton, &QPushButton::clicked, this, &WizardForm::onCalibrateDefaultButton);

    updateContinuePanels();
    showView(View::Main);
}

WizardForm::~WizardForm() = default;

CBridgeWatch &WizardForm::bridgeWatch()
{
    return m_ui->bridgeStateLabel->watch();
}

void WizardForm::setEditedProfileName(const std::optional<QString> &name)
{
    m_editedProfileName = name;
    updateContinuePanels();
}

// ---- views ----

void WizardForm::showMainChoices()
{
    showView(View::Main);
}

// The lower half of the main view: the files opened or saved lately, newest first.
void WizardForm::updateRecentList()
{
    m_ui->recentList->clear();
    const QList<RecentProfile> entries = CRecentProfiles().entries();
    for (const RecentProfile &entry : entries) {
        auto *item = new QListWidgetItem(tr("%1 (%2, %3)")
                                             .arg(entry.name, QFileInfo(entry.path).fileName(),
                                                 QLocale().toString(entry.when.date(), QLocale::ShortFormat)),
            m_ui->recentList);
        item->setData(Qt::UserRole, entry.path);
    }
    m_ui->recentTitleLabel->setVisible(!entries.isEmpty());
    m_ui->recentList->setVisible(!entries.isEmpty());
}

void WizardForm::onRecentClicked(QListWidgetItem *item)
{
    if (item)
        emit recentProfileRequested(item->data(Qt::UserRole).toString());
}

void WizardForm::showProgrammingChoices()
{
    showView(View::Programming);
}

void WizardForm::showTemplateChoice(int mode, std::function<void()> back)
{
    m_templateMode = mode;
    showView(View::Template);
    m_templateBack = std::move(back);
}

DefaultProfilesGui &WizardForm::templates()
{
    if (!m_templates) {
        m_templates = new DefaultProfilesGui(m_switcher, m_library); // owned by its view
        m_ui->templatesLayout->addWidget(m_templates);
    }
    return *m_templates;
}

ComparisonForm &WizardForm::comparison()
{
    if (!m_comparison) {
        m_comparison = new ComparisonForm(); // owned by its view
        connect(m_comparison, &ComparisonForm::templateChoiceRequested, this,
            [this] { showTemplateChoice(kAddToComparison); });
        connect(m_comparison, &ComparisonForm::graphRequested, this, &WizardForm::showComparisonGraph);
        // The list's check boxes and the legend's entries hide and show the same profiles.
        connect(m_comparison, &ComparisonForm::shownChanged, this, [this](int row, bool shown) {
            if (m_graph)
                m_graph->setShown(row, shown);
        });
        m_ui->comparisonLayout->addWidget(m_comparison);
    }
    return *m_comparison;
}

MultiGraphForm &WizardForm::graph()
{
    if (!m_graph) {
        m_graph = new MultiGraphForm(); // owned by its view
        connect(m_graph, &MultiGraphForm::shownChanged, this, [this](int row, bool shown) {
            if (m_comparison)
                m_comparison->setShown(row, shown);
        });
        m_ui->graphLayout->addWidget(m_graph);
    }
    return *m_graph;
}

// Each view returns to the one that leads to it; the template view to the one that asked for a
// template.
void WizardForm::showView(View view)
{
    m_view = view;
    m_templateBack = nullptr;
    switch (view) {
    case View::Main:
        updateRecentList();
        m_ui->views->setCurrentWidget(m_ui->mainView);
        m_backView = View::Main;
        break;
    case View::EditProfiles:
        m_ui->views->setCurrentWidget(m_ui->editProfilesView);
        m_backView = View::Main;
        break;
    case View::Programming:
        m_ui->views->setCurrentWidget(m_ui->programmingView);
        m_backView = View::Main;
        break;
    case View::Template:
        templates();
        m_ui->templateTitleLabel->setText(m_templateMode == kAddToComparison ? tr("Choose a profile to compare")
                : m_templateMode == kProgramTemplate                       ? tr("Choose a profile to program")
                                                                           : tr("Choose a template"));
        m_ui->views->setCurrentWidget(m_ui->templateView);
        m_backView = m_templateMode == kProgramTemplate ? View::Programming
            : m_templateMode == kAddToComparison        ? View::Comparison
                                                        : View::EditProfiles;
        break;
    case View::Comparison:
        comparison();
        m_ui->views->setCurrentWidget(m_ui->comparisonView);
        m_backView = View::Main;
        break;
    case View::Graph:
        graph();
        m_ui->views->setCurrentWidget(m_ui->graphView);
        m_backView = View::Comparison;
        break;
    }
    setStatusTip(prompt());
    if (m_active)
        applyFrame();
    emit viewChanged();
}

QString WizardForm::prompt() const
{
    switch (m_view) {
    case View::Main:
        return tr("Welcome to Sparkwright. What would you like to do?");
    case View::EditProfiles:
        return tr("Choose where to load your profile from.");
    case View::Programming:
        return tr("Choose what kind of profile to program your CDI with.");
    case View::Template:
        if (m_templateMode == kProgramTemplate)
            return tr("Select a profile from the dropdown list to program your CDI.");
        if (m_templateMode == kAddToComparison)
            return tr("Select a profile from the drop-down list for comparison.");
        return tr("Select an item from the drop-down list as template for your custom profile.");
    case View::Comparison:
        return tr("Put together the profiles whose ignition maps you would like to compare.");
    case View::Graph:
        return m_graph ? m_graph->statusTip() : QString();
    }
    return QString();
}

// The buttons below the page: Back wherever there is a way back, Next only where the template
// chooser needs it, named after what it does.
void WizardForm::applyFrame()
{
    PageButtons buttons;
    if (m_view == View::Template) {
        QString text;
        QString toolTip;
        if (m_templateMode == kProgramTemplate) {
            text = tr("P&rogram");
            toolTip = tr("{Program the CDI} with selected profile");
        } else if (m_templateMode == kAddToComparison) {
            text = tr("&Add to list");
            toolTip = tr("Add the selected profile to the {comparison}");
        } else {
            text = tr("&Create");
            toolTip = tr("Create {custom profile} from selected template");
        }
        buttons.nextVisible = true;
        buttons.nextEnabled = templates().hasProfiles();
        buttons.nextText = text;
        buttons.nextToolTip = withBraceMarkup(toolTip);
    } else {
        buttons.backVisible = m_view != View::Main;
    }
    emit buttonsChanged(buttons);
    emit promptChanged();
}

void WizardForm::setActive(bool active)
{
    m_active = active;
    setVisible(active);
    if (active) {
        updateContinuePanels();
        applyFrame();
    }
}

void WizardForm::onBack()
{
    if (m_view == View::Template && m_templateBack) {
        const std::function<void()> back = m_templateBack;
        back();
    } else if (m_view != View::Main) {
        showView(m_backView);
    }
}

void WizardForm::onNext()
{
    if (m_view != View::Template)
        return;
    const std::optional<Profile> chosen = templates().selectedProfile();
    if (!chosen)
        return;
    switch (m_templateMode) {
    case kProgramTemplate:
        emit programmingRequested(*chosen);
        break;
    case kAddToComparison:
        comparison().addProfile(*chosen);
        showView(View::Comparison);
        break;
    default:
        // The editor takes it as the user's own profile, in place of the one it holds.
        emit editorRequested(*chosen);
        break;
    }
}

// ---- choice buttons ----

void WizardForm::onEditProfilesButton()
{
    showView(View::EditProfiles);
}

void WizardForm::onCalibrationSelectionButton()
{
    showView(View::Programming);
}

void WizardForm::onTestConnectionButton()
{
    emit connectionTestRequested();
}

void WizardForm::onCompareButton()
{
    showView(View::Comparison);
}

void WizardForm::onImportFromCDIButton()
{
    emit importRequested();
}

void WizardForm::onCreateFromTemplateButton()
{
    showTemplateChoice(kCreateCustom);
}

void WizardForm::onLoadFileButton()
{
    emit openFileRequested();
}

void WizardForm::onCalibrateCustomButton()
{
    emit programFileRequested();
}

void WizardForm::onCalibrateDefaultButton()
{
    showTemplateChoice(kProgramTemplate);
}

// ---- continue panels ----

// Both panels name the profile the editor holds, and are hidden while it holds none.
void WizardForm::updateContinuePanels()
{
    m_ui->editContinueForm->setVisible(m_editedProfileName.has_value());
    m_ui->programmingContinueForm->setVisible(m_editedProfileName.has_value());
    if (!m_editedProfileName)
        return;
    const QString name = QLatin1String(":<br><font color=") + highlightColour() + QLatin1Char('>')
        + m_editedProfileName->toHtmlEscaped() + QLatin1String("</font>");
    m_ui->editContinueForm->setTexts(tr("Continue editing profile") + name, tr("Continue &editing"));
    m_ui->programmingContinueForm->setTexts(
        tr("Program the CDI with the profile recently opened in editor") + name, tr("C&ontinue"));
}

// ---- comparison ----

void WizardForm::showComparisonGraph(const std::vector<PlottedMap> &maps)
{
    showView(View::Graph);
    graph().setMaps(maps);
}

// ---- language ----

void WizardForm::markUpToolTips()
{
    for (QPushButton *button : m_ui->views->findChildren<QPushButton *>()) {
        if (button->toolTip().contains(QLatin1Char('{')))
            CAccessibility::setMarkedToolTip(button, button->toolTip());
    }
}

void WizardForm::retranslate(int language)
{
    Q_UNUSED(language)
    m_ui->retranslateUi(this);
    markUpToolTips();
    // Views not built yet come up in the language then installed.
    if (m_templates)
        m_templates->retranslate();
    if (m_comparison)
        m_comparison->retranslate();
    if (m_graph)
        m_graph->retranslate();
    updateContinuePanels();
    // The view stays, and so does the way back from it.
    const std::function<void()> back = m_templateBack;
    showView(m_view);
    m_templateBack = back;
}

void WizardForm::onSwitchedLanguage(int index)
{
    retranslate(index);
}
