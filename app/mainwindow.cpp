#include "mainwindow.h"

#include "data/cdataholder.h"
#include "data/cfilemanifest.h"
#include "device/cbridgewatch.h"
#include "device/cdeviceflow.h"
#include "device/serialports.h"
#include "devicepages/devicesform.h"
#include "devicepages/waitform.h"
#include "devicepages/writeconfirmationdialog.h"
#include "dialogs/aboutdialog.h"
#include "dialogs/cupdater.h"
#include "dialogs/cweblinks.h"
#include "editor/editorform.h"
#include "profile/mapvalidation.h"
#include "profile/profilefile.h"
#include "profile/recentprofiles.h"
#include "profile/suggestedfilename.h"
#include "render/bracemarkup.h"
#include "render/mapplotter.h"
#include "render/plotfile.h"
#include "render/summarysheet.h"
#include "shell/cbrowserwidget.h"
#include "shell/clanguagemenu.h"
#include "shell/cprofilefiles.h"
#include "shell/iuserprompts.h"
#include "shell/lazyicon.h"
#include "start/multigraphform.h"
#include "start/wizardform.h"
#include "summary/customform.h"

#include "ui_mainwindow.h"

#include <QCloseEvent>
#include <QDateTime>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QPainter>
#include <QPrinter>
#include <QScreen>
#include <QStatusBar>
#include <QStyle>
#include <QThread>
#include <QTimer>

#include <algorithm>

namespace {

const char kOrganizationFallback[] = "sparkwright.example";
const int kSavedMessageMs = 8000;

} // namespace

MainWindow::MainWindow(CDataHolder &data, std::unique_ptr<WizardForm> wizard, LaterPages laterPages,
    CLanguageMenu &languageMenu, QWidget *parent)
    : QMainWindow(parent)
    , m_ui(std::make_unique<Ui::MainWindow>())
    , m_data(data)
    , m_wizard(wizard.get())
    , m_laterPages(std::move(laterPages))
{
    m_ui->setupUi(this);
    m_ui->menuLanguage->addActions(languageMenu.actions());
    // The menus' pictures are read when a menu first shows them.
    const std::pair<QAction *, const char *> menuIcons[] = {
        {m_ui->menuHilfe->menuAction(), "question"},
        {m_ui->actionNew, "new"},
        {m_ui->actionOpen, "load"},
        {m_ui->actionSave, "save"},
        {m_ui->actionReset, "unknown"},
        {m_ui->actionExit, "exit"},
        {m_ui->actionAbout, "info"},
        {m_ui->actionImport, "usb-read"},
        {m_ui->actionExport, "usb-write"},
        {m_ui->actionProgrammableCDIs, "www-program"},
        {m_ui->actionTechnicalSpecifications, "www-tech"},
        {m_ui->actionVisitUs, "www-bike"},
        {m_ui->actionContactUs, "www-contact"},
        {m_ui->actionFAQ, "www-faw"},
        {m_ui->actionTrivia, "www-facts"},
        {m_ui->actionPrint, "print"},
        {m_ui->actionPrintDialog, "print"},
    };
    for (const auto &[action, name] : menuIcons)
        action->setIcon(lazyIcon(QStringLiteral(":/Images/%1.png").arg(QLatin1String(name))));
    // The style's standard icon costs a noticeable part of the start-up; it is fetched when the
    // Help menu first opens.
    connect(m_ui->menuHelp, &QMenu::aboutToShow, this, [this] {
        if (m_ui->actionUpdate->icon().isNull())
            m_ui->actionUpdate->setIcon(style()->standardIcon(QStyle::SP_BrowserReload));
    });

    // The content area owns the pages from here on; only the page shown is visible.
    m_ui->contentLayout->addWidget(wizard.release());
    // The start page's choices.
    connect(m_wizard, &WizardForm::buttonsChanged, this, &MainWindow::setButtons);
    connect(m_wizard, &WizardForm::promptChanged, this, &MainWindow::refreshPrompt);
    connect(m_wizard, &WizardForm::editorRequested, this, &MainWindow::openInEditor);
    connect(m_wizard, &WizardForm::programmingRequested, this, &MainWindow::beginProgramming);
    connect(m_wizard, &WizardForm::openFileRequested, this, &MainWindow::onOpenProfileMenu);
    connect(m_wizard, &WizardForm::programFileRequested, this, &MainWindow::programProfileFile);
    connect(m_wizard, &WizardForm::recentProfileRequested, this, &MainWindow::openProfileFile);
    connect(m_wizard, &WizardForm::continueEditingRequested, this, &MainWindow::continueEditing);
    connect(m_wizard, &WizardForm::programEditedRequested, this, &MainWindow::programEditedProfile);
    connect(m_wizard, &WizardForm::connectionTestRequested, this, &MainWindow::requestConnectionTest);
    connect(m_wizard, &WizardForm::importRequested, this, &MainWindow::requestImport);
    m_portLister = std::make_unique<CSystemPortLister>();
    m_device = std::make_unique<CDeviceFlow>(data.library(), *m_portLister);
    // The flow tells the pages what to show; the progress page is built when it first has
    // something to show, as are the port page and the write confirmation.
    connect(m_device.get(), &CDeviceFlow::exchangeStarted, this,
        [this](DeviceExchange exchange) { waitForm().showActivity(exchange); });
    connect(m_device.get(), &CDeviceFlow::waiting, this, [this] { waitForm().showWaiting(); });
    connect(m_device.get(), &CDeviceFlow::finished, this,
        [this](const ExchangeResult &result) { waitForm().showResult(result); });
    connect(m_device.get(), &CDeviceFlow::copyNotKept, this,
        [this](const FileError &error) { waitForm().showCopyNotKept(error); });
    connect(m_device.get(), &CDeviceFlow::refused, this,
        [this](const DeviceRefusal &refusal) { waitForm().showRefusal(refusal); });
    connect(m_device.get(), &CDeviceFlow::recorded, this,
        [this](const ExchangeTranscript &transcript) { waitForm().showTranscript(transcript); });
    connect(m_device.get(), &CDeviceFlow::busyChanged, &m_wizard->bridgeWatch(),
        &CBridgeWatch::setExchangeRunning);
    connect(m_device.get(), &CDeviceFlow::finished, &m_wizard->bridgeWatch(), &CBridgeWatch::noteResult);
    connect(m_device.get(), &CDeviceFlow::exchangeStarted, this, &MainWindow::showProgress);
    connect(m_device.get(), &CDeviceFlow::portSelectionShown, this, &MainWindow::showPortSelection);
    connect(m_device.get(), &CDeviceFlow::leaveRequested, this, &MainWindow::leaveDevicePages);
    connect(m_device.get(), &CDeviceFlow::importedProfileReady, this, &MainWindow::openImportedProfile);
    connect(m_device.get(), &CDeviceFlow::busyChanged, this, &MainWindow::setDeviceBusy);
    connect(m_device.get(), &CDeviceFlow::finished, this, &MainWindow::onTransactionFinished);
    connect(m_device.get(), &CDeviceFlow::programmingPreviewReady, this, &MainWindow::onProgrammingPreview);
    switchTo(nullptr);

    connect(m_ui->backButton, &QPushButton::clicked, this, &MainWindow::onBackButton);
    connect(m_ui->nextButton, &QPushButton::clicked, this, &MainWindow::onNextButton);
    connect(m_ui->exitButton, &QPushButton::clicked, this, &MainWindow::onExitMenu);
    connect(m_ui->actionExit, &QAction::triggered, this, &MainWindow::onExitMenu);
    connect(m_ui->actionNew, &QAction::triggered, this, &MainWindow::onNewProfileMenu);
    connect(m_ui->actionOpen, &QAction::triggered, this, &MainWindow::onOpenProfileMenu);
    connect(m_ui->actionSave, &QAction::triggered, this, &MainWindow::onSaveProfileMenu);
    connect(m_ui->actionSaveAs, &QAction::triggered, this, &MainWindow::onSaveProfileAsMenu);
    connect(m_ui->actionReset, &QAction::triggered, this, &MainWindow::onResetMenu);
    connect(m_ui->menuRecent, &QMenu::aboutToShow, this, &MainWindow::onRecentMenu);
    // Ctrl+Z takes back the last change; the reset asks its own question from the menu only.
    m_ui->actionUndo->setShortcut(QKeySequence::Undo);
    m_ui->actionRedo->setShortcuts(
        {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z), QKeySequence(Qt::CTRL | Qt::Key_Y)});
    connect(m_ui->actionUpdate, &QAction::triggered, this, &MainWindow::onUpdateMenu);
    connect(m_ui->actionAbout, &QAction::triggered, this, &MainWindow::onAboutMenu);
    connect(m_ui->actionImport, &QAction::triggered, this, &MainWindow::onImportMenu);
    connect(m_ui->actionExport, &QAction::triggered, this, &MainWindow::onExportMenu);
    connect(m_ui->actionPrint, &QAction::triggered, this, &MainWindow::onPrintMenu);
    connect(m_ui->actionPrintDialog, &QAction::triggered, this, &MainWindow::onPrintDialogMenu);
    connect(m_ui->actionExportGraph, &QAction::triggered, this, &MainWindow::onExportGraphMenu);
    connect(m_ui->actionExportValues, &QAction::triggered, this, &MainWindow::onExportValuesMenu);
    connect(m_wizard, &WizardForm::viewChanged, this, &MainWindow::updateExportActions);
    connect(m_ui->actionProgrammedProfiles, &QAction::triggered, this, &MainWindow::onProgrammedProfilesMenu);
    connect(m_ui->actionTechnicalSpecifications, &QAction::triggered, this,
        &MainWindow::onTechnicalSpecifications);
    connect(m_ui->actionProgrammableCDIs, &QAction::triggered, this, &MainWindow::onProgrammableCDIs);
    connect(m_ui->actionTrivia, &QAction::triggered, this, &MainWindow::onTrivia);
    connect(m_ui->actionFAQ, &QAction::triggered, this, &MainWindow::onFAQ);
    connect(m_ui->actionVisitUs, &QAction::triggered, this, &MainWindow::onVisitUs);
    connect(m_ui->actionContactUs, &QAction::triggered, this, &MainWindow::onContactUs);

    // The status bar shows only while it has something to say, so that the pages keep their
    // room in a small window.
    statusBar()->setSizeGripEnabled(false);
    statusBar()->hide();
    connect(statusBar(), &QStatusBar::messageChanged, statusBar(),
        [this](const QString &message) { statusBar()->setVisible(!message.isEmpty()); });
    setFixedTexts();
    paintBanner();
    placeOnScreen();
}

// The editor, one of the pages, goes with the window's widget tree after this window has
// stopped being a MainWindow; its history must no longer report here.
MainWindow::~MainWindow()
{
    if (m_editor)
        disconnect(&m_editor->history(), nullptr, this, nullptr);
}

// A page made while the window shows would show itself at once; it stays hidden until it is the
// page shown.
EditorForm &MainWindow::editor()
{
    if (!m_editor) {
        m_editor = m_laterPages.editor().release(); // owned by the content area
        m_ui->contentLayout->addWidget(m_editor);
        m_editor->setActive(false);
        connect(m_editor, &EditorForm::leaveRequested, this, &MainWindow::showStart);
        connect(m_editor, &EditorForm::programmingRequested, this, &MainWindow::showProgrammingConfirmation);
        connect(m_ui->actionUndo, &QAction::triggered, &m_editor->history(), &QUndoStack::undo);
        connect(m_ui->actionRedo, &QAction::triggered, &m_editor->history(), &QUndoStack::redo);
        connect(&m_editor->history(), &QUndoStack::indexChanged, this, &MainWindow::updateUndoActions);
        connect(&m_editor->history(), &QUndoStack::indexChanged, this, &MainWindow::updateTitle);
        connect(m_editor, &EditorForm::saved, this, &MainWindow::onProfileSaved);
    }
    return *m_editor;
}

CustomForm &MainWindow::confirmation()
{
    if (!m_confirmation) {
        m_confirmation = m_laterPages.confirmation().release(); // owned by the content area
        m_ui->contentLayout->addWidget(m_confirmation);
        m_confirmation->setActive(false);
        connect(m_confirmation, &CustomForm::backRequested, this, &MainWindow::onConfirmationBack);
        connect(m_confirmation, &CustomForm::nextRequested, this, &MainWindow::onConfirmationNext);
    }
    return *m_confirmation;
}

// The window opens at its designed size where the screen has room for it, centred in the free
// area of its screen; on a smaller screen it takes the free area, but never less than its pages
// need. The smallest size follows from the pages and the fonts, so that it stays usable at
// 1024 x 700 with a large system font.
//
// The window manager's frame is not known before the window shows; where the designed size and a
// title bar's room would not fit, the window opens maximised, so that the window manager fits the
// frame into the screen and the menu bar and the buttons stay on it.
void MainWindow::placeOnScreen()
{
    const QSize designed(1220, 680);
    const QSize frameRoom(16, 48);
    const QScreen *display = screen();
    if (!display) {
        resize(designed.expandedTo(minimumSizeHint()));
        return;
    }
    const QRect available = display->availableGeometry();
    const bool roomy = available.width() >= designed.width() + frameRoom.width()
        && available.height() >= designed.height() + frameRoom.height();
    const QSize opening = roomy ? designed : (available.size() - frameRoom).expandedTo(minimumSizeHint());
    setGeometry(QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter, opening, available));
    if (!roomy)
        setWindowState(windowState() | Qt::WindowMaximized);
}

// The banner carries the version and the names, painted into the image once per language. The
// strips above and below it continue the image's own edge colours, so that it never looks cut
// off on a taller window.
void MainWindow::paintBanner()
{
    const bool sharp = devicePixelRatioF() > 1.0;
    QPixmap banner(
        sharp ? QStringLiteral(":/Images/wizflash@2x.png") : QStringLiteral(":/Images/wizflash.png"));
    if (banner.isNull())
        return;
    if (sharp)
        banner.setDevicePixelRatio(2.0);
    const QImage edges = banner.toImage();
    {
        QPainter painter(&banner);
        painter.setRenderHint(QPainter::TextAntialiasing);
        QFont font = painter.font();
        font.setPointSize(12);
        painter.setFont(font);
        painter.setPen(QColor(115, 115, 140));
        painter.drawText(QPoint(20, 35), tr("version %1").arg(programVersion()));
        painter.drawText(QPoint(20, 53), QStringLiteral("Sparkwright"));
        QString organization = QCoreApplication::organizationName();
        if (organization.isEmpty())
            organization = QLatin1String(kOrganizationFallback);
        int x = 20;
        for (int i = 0; i < organization.size(); ++i) {
            // A blue that lightens with every character; long names stay at white's edge.
            painter.setPen(
                QColor(std::min(70 + 6 * i, 255), std::min(90 + 6 * i, 255), std::min(180 + 6 * i, 255)));
            painter.drawText(QPoint(x, 80), organization.at(i));
            x += painter.fontMetrics().horizontalAdvance(organization.at(i));
        }
    }
    m_ui->imageLabelMid->setPixmap(banner);
    // What the banner says in paint, for screen readers.
    m_ui->imageLabelMid->setAccessibleName(tr("Sparkwright, version %1").arg(programVersion()));

    const auto fill = [](QLabel *label, QColor colour) {
        QPalette palette = label->palette();
        palette.setColor(QPalette::Window, colour);
        label->setPalette(palette);
    };
    fill(m_ui->imageLabelTop, edges.pixelColor(edges.width() / 2, 0));
    fill(m_ui->imageLabelBottom, edges.pixelColor(edges.width() / 2, edges.height() - 1));
}

// Texts that the form cannot hold in one piece.
void MainWindow::setFixedTexts()
{
    m_ui->actionVisitUs->setText(CWebLinks::visitUsText());
}

// Undo and Redo name their step and work on the editor only.
void MainWindow::updateUndoActions()
{
    const QUndoStack *history = m_editor ? &m_editor->history() : nullptr;
    const bool canUndo = history && history->canUndo();
    const bool canRedo = history && history->canRedo();
    const bool editing = m_editor && m_editor->isVisible();
    m_ui->actionUndo->setEnabled(editing && canUndo);
    m_ui->actionRedo->setEnabled(editing && canRedo);
    m_ui->actionUndo->setText(canUndo ? tr("&Undo %1").arg(history->undoText()) : tr("&Undo"));
    m_ui->actionRedo->setText(canRedo ? tr("Re&do %1").arg(history->redoText()) : tr("Re&do"));
}

// ---- page changes ----

void MainWindow::switchTo(QWidget *target)
{
    // Between pages Next is enabled again; the page being prepared may then disable it.
    if (!target)
        setNextEnabled(true);
    const bool editing = target && target == m_editor;
    if (editing)
        m_ui->exitButton->hide();
    for (QAction *action :
        {m_ui->actionSave, m_ui->actionSaveAs, m_ui->actionReset, m_ui->actionExport, m_ui->actionPrint,
            m_ui->actionPrintDialog})
        action->setEnabled(editing);
    m_wizard->setActive(target == m_wizard);
    if (m_editor)
        m_editor->setActive(target == m_editor);
    if (m_confirmation)
        m_confirmation->setActive(target == m_confirmation);
    if (m_waitForm)
        m_waitForm->setActive(target == m_waitForm);
    if (m_devicesForm)
        m_devicesForm->setActive(target == m_devicesForm);
    updateUndoActions();
    updateExportActions();
    updateTitle();
    m_ui->promptLabel->setText(target ? target->statusTip() : QString());
}

void MainWindow::resetFrame()
{
    m_ui->nextButton->setToolTip(QString());
    m_ui->imageColumn->show();
    m_ui->leftBorderFrame->show();
}

// Every page change: no page first, then the target is prepared (its data, its prompt, its
// buttons) and shown.
void MainWindow::showPage(QWidget *target, CBrowserWidget *page, const std::function<void()> &prepare)
{
    switchTo(nullptr);
    m_currentWidget = target;
    m_current = page;
    resetFrame();
    m_ui->promptLabel->show();
    prepare();
    switchTo(target);
}

void MainWindow::showStartPage(const std::function<void()> &chooseView)
{
    showPage(m_wizard, m_wizard, [this, &chooseView] {
        m_wizard->setEditedProfileName(editedProfileName());
        chooseView();
    });
}

void MainWindow::showStart()
{
    showStartPage([this] { m_wizard->showMainChoices(); });
}

// The editor words its own prompt.
void MainWindow::prepareEditorFrame()
{
    setButtonState(false, true, true, true, tr("&Next"), tr("Program the CDI with this profile"));
}

void MainWindow::showEditor(const Profile &profile, const QString &filePath)
{
    EditorForm &page = editor();
    showPage(&page, &page, [this, &page, &profile, &filePath] {
        page.setProfile(profile, filePath);
        prepareEditorFrame();
    });
}

void MainWindow::continueEditing()
{
    if (!m_editor || !m_editor->hasProfile())
        return;
    showPage(m_editor, m_editor, [this] { prepareEditorFrame(); });
}

// A profile whose map the CDI would refuse cannot go further; the page says why.
void MainWindow::prepareConfirmationFrame()
{
    confirmation().setStatusTip(tr("Please confirm programming the CDI with this profile."));
    const bool valid = !validate(confirmation().profile()).hasErrors();
    setButtonState(true, true, true, valid, tr("Program the &CDI"), QString());
}

void MainWindow::showProgrammingConfirmation(const Profile &profile)
{
    // A copy: the profile may be the editor's own, which must stay as it is.
    const Profile shown = profile;
    m_confirmationFromEditor = isShown(m_editor);
    CustomForm &page = confirmation();
    showPage(&page, &page, [this, &page, &shown] {
        page.setProfile(shown);
        prepareConfirmationFrame();
    });
}

void MainWindow::onConfirmationBack()
{
    if (m_confirmationFromEditor && m_editor && m_editor->hasProfile())
        continueEditing();
    else
        showStartPage([this] { m_wizard->showProgrammingChoices(); });
}

void MainWindow::onConfirmationNext()
{
    beginProgramming(m_confirmation->profile());
}

void MainWindow::setButtonState(bool exitVisible, bool backVisible, bool nextVisible, bool nextEnabled,
    const QString &nextText, const QString &nextToolTip)
{
    m_ui->exitButton->setVisible(exitVisible);
    m_ui->backButton->setVisible(backVisible);
    m_ui->nextButton->setVisible(nextVisible);
    m_ui->nextButton->setEnabled(nextEnabled);
    m_ui->nextButton->setText(nextText);
    m_ui->nextButton->setToolTip(nextToolTip);
    // Screen readers read the tool tip as the description: without its highlight markup.
    m_ui->nextButton->setAccessibleDescription(withoutMarkup(nextToolTip));
}

void MainWindow::setNextEnabled(bool enabled)
{
    m_ui->nextButton->setEnabled(enabled);
}

void MainWindow::refreshPrompt()
{
    m_ui->promptLabel->setText(m_currentWidget ? m_currentWidget->statusTip() : QString());
}

bool MainWindow::mayLeaveEditor()
{
    return !m_editor || m_editor->confirmDiscard();
}

std::optional<QString> MainWindow::editedProfileName() const
{
    if (m_editor && m_editor->hasProfile())
        return m_editor->profile().name();
    return std::nullopt;
}

void MainWindow::setButtons(const PageButtons &buttons)
{
    setButtonState(buttons.exitVisible, buttons.backVisible, buttons.nextVisible, buttons.nextEnabled,
        buttons.nextText, buttons.nextToolTip);
}

void MainWindow::onBackButton()
{
    if (m_current)
        m_current->onBack();
}

void MainWindow::onNextButton()
{
    if (m_current)
        m_current->onNext();
}

// ---- device requests ----

// Before programming the CDI is read, so that the last question can show what programming
// changes (onProgrammingPreview).
void MainWindow::beginProgramming(const Profile &profile)
{
    rememberDeviceWayBack();
    m_device->prepareProgramming(profile);
}

// The last question before programming: what changes, and whether the CDI may give the profile
// back. Cancel sends nothing more.
void MainWindow::onProgrammingPreview(const ProgrammingPreview &preview)
{
    if (m_quitWhenIdle) {
        m_quitWhenIdle = false;
        m_device->setReadBack(true);
        m_device->cancelProgramming();
        QTimer::singleShot(0, this, &MainWindow::onExitMenu);
        return;
    }
    waitForm().showConfirmationPending();
    setWaitPrompt();
    refreshPrompt();
    if (!m_writeConfirmation)
        m_writeConfirmation = new WriteConfirmationDialog(this);
    m_writeConfirmation->setPreview(preview, m_data.library());
    if (m_writeConfirmation->exec() == QDialog::Accepted)
        m_device->confirmProgramming(m_writeConfirmation->allowReimport());
    else
        m_device->cancelProgramming();
}

// The device pages return to where the action was chosen, unless it was chosen on them (a retry
// from the port selection).
void MainWindow::rememberDeviceWayBack()
{
    // A request refused as busy must not change where the running exchange returns to.
    if (isShown(m_waitForm) || isShown(m_devicesForm) || m_device->isBusy())
        return;
    m_deviceBack = wayBackToCurrentPage();
}

// Back to the page shown now as it is now, once the user is done with what replaces it.
std::function<void()> MainWindow::wayBackToCurrentPage()
{
    if (isShown(m_editor))
        return [this] { continueEditing(); };
    if (isShown(m_confirmation)) {
        const Profile shown = m_confirmation->profile();
        const bool fromEditor = m_confirmationFromEditor;
        return [this, shown, fromEditor] {
            showProgrammingConfirmation(shown);
            m_confirmationFromEditor = fromEditor;
        };
    }
    if (m_currentWidget == m_wizard) {
        const WizardForm::View view = m_wizard->view();
        return [this, view] { showStartPage([this, view] { m_wizard->showView(view); }); };
    }
    return nullptr;
}

void MainWindow::requestProgramming(const Profile &profile, bool allowReimport)
{
    rememberDeviceWayBack();
    m_device->program(profile, allowReimport);
}

void MainWindow::requestConnectionTest()
{
    rememberDeviceWayBack();
    m_device->testConnection();
}

void MainWindow::requestImport()
{
    rememberDeviceWayBack();
    m_device->importProfile();
}

// The device pages take their place among the pages when the program first talks to a CDI.
WaitForm &MainWindow::waitForm()
{
    if (!m_waitForm) {
        m_waitForm = new WaitForm();
        m_waitForm->setLibrary(m_data.library());
        m_ui->contentLayout->addWidget(m_waitForm);
        m_waitForm->setActive(false);
        connect(m_waitForm, &WaitForm::backRequested, m_device.get(), &CDeviceFlow::back);
        connect(m_waitForm, &WaitForm::nextRequested, m_device.get(), &CDeviceFlow::next);
        connect(m_waitForm, &WaitForm::retryRequested, m_device.get(), &CDeviceFlow::retry);
        connect(m_waitForm, &WaitForm::otherPortRequested, m_device.get(), &CDeviceFlow::chooseAnotherPort);
    }
    return *m_waitForm;
}

DevicesForm &MainWindow::devicesForm()
{
    if (!m_devicesForm) {
        m_devicesForm = new DevicesForm(*m_portLister);
        m_ui->contentLayout->addWidget(m_devicesForm);
        m_devicesForm->setActive(false);
        connect(m_devicesForm, &DevicesForm::backRequested, m_device.get(), &CDeviceFlow::leavePortSelection);
        connect(m_devicesForm, &DevicesForm::portChosen, m_device.get(), &CDeviceFlow::portChosen);
    }
    return *m_devicesForm;
}

void MainWindow::showPortSelection()
{
    DevicesForm &page = devicesForm();
    showPage(&page, &page,
        [this] { setButtonState(false, true, true, true, tr("&Next"), tr("Select port")); });
}

// While the exchange runs there is nowhere to go; afterwards Back returns to where the action was
// chosen and Next goes on (to the editor after an import).
void MainWindow::showProgress()
{
    WaitForm &page = waitForm();
    showPage(&page, &page, [this] {
        setWaitPrompt();
        setButtonState(false, false, false, false, tr("&Next"), QString());
    });
}

void MainWindow::onTransactionFinished()
{
    if (m_quitWhenIdle) {
        m_quitWhenIdle = false;
        m_device->setReadBack(true);
        // After the result was handled, as if the user had chosen Exit now.
        QTimer::singleShot(0, this, &MainWindow::onExitMenu);
    }
    if (!isShown(m_waitForm))
        return;
    setWaitPrompt();
    setButtonState(false, true, true, true, tr("&Next"), QString());
    refreshPrompt();
}

void MainWindow::setWaitPrompt()
{
    if (m_quitWhenIdle)
        return;
    waitForm().setStatusTip(m_device->isBusy() ? tr("Sparkwright is exchanging data with your CDI.")
                                                : tr("The exchange with your CDI has ended."));
}

void MainWindow::leaveDevicePages()
{
    const std::function<void()> back = std::move(m_deviceBack);
    m_deviceBack = nullptr;
    if (back)
        back();
    else
        showStart();
}

// An imported profile replaces the one being edited only after the same question as Open.
void MainWindow::openImportedProfile(const Profile &profile)
{
    if (!mayLeaveEditor())
        return;
    m_deviceBack = nullptr;
    showEditor(profile);
}

void MainWindow::setDeviceBusy(bool busy)
{
    m_ui->actionImport->setEnabled(!busy);
    m_ui->actionProgrammedProfiles->setEnabled(!busy);
    m_wizard->setEnabled(!busy);
    if (busy)
        m_ui->actionExport->setEnabled(false);
}

void MainWindow::onProgrammedProfilesMenu()
{
    const QString folder = m_device->programmedFolder();
    QDir().mkpath(folder);
    const QString path = userPrompts().openFileName(this, tr("Programmed profiles"), CProfileFiles::filter(), folder);
    if (!path.isEmpty())
        openProfileFile(path);
}

// ---- menus ----

void MainWindow::onExitMenu()
{
    if (!deferQuitWhileBusy() && mayLeaveEditor())
        QCoreApplication::exit(0);
}

// Quitting in the middle of an exchange could cut a frame short and leave the CDI half
// programmed, so every way of quitting waits for the exchange to end (never more than about
// 3.5 s) and then quits the usual way, unsaved changes asked about as ever.
bool MainWindow::deferQuitWhileBusy()
{
    if (!m_device->isBusy())
        return false;
    m_quitWhenIdle = true;
    // Nobody stays to see a read back: the programming ends with its echo.
    m_device->setReadBack(false);
    waitForm().setStatusTip(tr("Sparkwright closes as soon as the exchange with your CDI has ended."));
    refreshPrompt();
    return true;
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    if (deferQuitWhileBusy() || !mayLeaveEditor()) {
        event->ignore();
        return;
    }
    event->accept();
    // The hint window may still be open; the program ends with its main window all the same.
    QCoreApplication::exit(0);
}

// Back on the template chooser returns to the page and view the user came from.
void MainWindow::onNewProfileMenu()
{
    if (!mayLeaveEditor())
        return;
    // From the template chooser itself, Back keeps its own way.
    std::function<void()> back;
    if (m_currentWidget != m_wizard || m_wizard->view() != WizardForm::View::Template)
        back = wayBackToCurrentPage();
    showStartPage([this, back] { m_wizard->showTemplateChoice(WizardForm::kCreateCustom, back); });
}

// Filled each time it opens: the list changes with every open and save, and files go away.
void MainWindow::onRecentMenu()
{
    m_ui->menuRecent->clear();
    const QList<RecentProfile> entries = CRecentProfiles().entries();
    for (const RecentProfile &entry : entries) {
        // Numbered, so that each entry has its Alt key; a "&" in a name stays a "&".
        const QString number = QStringLiteral("&%1 ").arg(m_ui->menuRecent->actions().size() + 1);
        QString text = tr("%1 (%2, %3)")
                           .arg(entry.name, QFileInfo(entry.path).fileName(),
                               QLocale().toString(entry.when.date(), QLocale::ShortFormat));
        text = number + text.replace(QLatin1Char('&'), QLatin1String("&&"));
        const QString path = entry.path;
        connect(m_ui->menuRecent->addAction(text), &QAction::triggered, this,
            [this, path] { openProfileFile(path); });
    }
    if (entries.isEmpty())
        m_ui->menuRecent->addAction(tr("No recent profiles"))->setEnabled(false);
}

void MainWindow::openInEditor(const Profile &profile)
{
    if (mayLeaveEditor())
        showEditor(profile);
}

void MainWindow::openProfileFile(const QString &path)
{
    if (!mayLeaveEditor())
        return;
    if (const std::optional<Profile> profile = CProfileFiles::load(this, path))
        showEditor(*profile, path);
}

// The question about unsaved changes comes once a file was chosen: a cancelled dialog changes
// nothing.
void MainWindow::onOpenProfileMenu()
{
    const QString path = CProfileFiles::chooseToOpen(this);
    if (!path.isEmpty())
        openProfileFile(path);
}

void MainWindow::programProfileFile()
{
    if (const std::optional<Profile> profile = CProfileFiles::open(this))
        showProgrammingConfirmation(*profile);
}

void MainWindow::programEditedProfile()
{
    if (m_editor && m_editor->hasProfile())
        showProgrammingConfirmation(m_editor->profile());
}

// The reset asks its own question, naming the template; a second question about unsaved
// changes before it would only repeat it.
void MainWindow::onResetMenu()
{
    if (isShown(m_editor))
        m_editor->resetProfile();
}

void MainWindow::onImportMenu()
{
    requestImport();
}

void MainWindow::onExportMenu()
{
    if (isShown(m_editor))
        showProgrammingConfirmation(m_editor->profile());
}

void MainWindow::onAboutMenu()
{
    // Modal, yet it returns at once: the dialog's Close button ends it.
    m_laterPages.about().open();
}

void MainWindow::onUpdateMenu()
{
#ifdef Q_OS_WIN
    if (!mayLeaveEditor())
        return;
    const QString error
        = CUpdater::launch(QCoreApplication::applicationDirPath(), CFileManifest(m_data).text());
    if (error.isEmpty()) {
        // The updater replaces the program's files, so the program gets out of its way.
        hide();
        QThread::msleep(1000);
        QCoreApplication::exit(0);
        return;
    }
    userPrompts().warn(this, tr("Update Failed"),
        tr("Could not launch updater") + QLatin1String(" (") + error + QLatin1String(")."), tr("Close"));
#else
    // The package manager updates the program here; the program only points the way and keeps
    // running, so the edited profile stays where it is.
    if (!CUpdater::hasSoftwareCentre(CUpdater::desktopDataFolders())) {
        userPrompts().inform(this, tr("Update"), CUpdater::packageManagerNotice(), tr("Close"));
        return;
    }
    const QStringList buttons {tr("Open &Software Centre"), tr("Close")};
    if (userPrompts().ask(this, tr("Update"), CUpdater::packageManagerNotice(), buttons, 1, 1) == 0)
        QDesktopServices::openUrl(CUpdater::softwareCentrePage());
#endif
}

void MainWindow::onTechnicalSpecifications()
{
    CWebLinks::open(CWebLinks::TechnicalSpecifications);
}

void MainWindow::onProgrammableCDIs()
{
    CWebLinks::open(CWebLinks::ProgrammableCdis);
}

void MainWindow::onTrivia()
{
    CWebLinks::open(CWebLinks::Trivia);
}

void MainWindow::onFAQ()
{
    CWebLinks::open(CWebLinks::Faq);
}

void MainWindow::onVisitUs()
{
    CWebLinks::open(CWebLinks::VisitUs);
}

void MainWindow::onContactUs()
{
    CWebLinks::open(CWebLinks::ContactUs);
}

// ---- files ----

void MainWindow::onSaveProfileMenu()
{
    if (isShown(m_editor))
        m_editor->saveProfile();
}

void MainWindow::onSaveProfileAsMenu()
{
    if (isShown(m_editor))
        m_editor->saveAs();
}

void MainWindow::onProfileSaved(const QString &path)
{
    updateTitle();
    statusBar()->showMessage(tr("Saved to %1").arg(QDir::toNativeSeparators(path)), kSavedMessageMs);
}

// The sheet is written completely beside the target before it takes its place, as a profile is.
void MainWindow::onPrintMenu()
{
    if (!isShown(m_editor))
        return;
    const QString title = tr("Print PDF");
    const QString suggested
        = suggestedFileName(m_editor->profile().name(), tr("profile")) + QLatin1String(".pdf");
    const QString path
        = userPrompts().saveFileName(this, title, suggested, tr("PDF files") + QLatin1String(" (*.pdf)"));
    if (path.isEmpty())
        return;
    const qint32 libraryValue = m_data.library() ? m_data.library()->libraryValue() : 0;
    CProfileFiles::write(this, path, title, tr("Printing PDF failed"),
        summarySheetPdf(m_editor->profile(), summarySheetHeaderLine(libraryValue, QDateTime::currentDateTime())));
}

// The same sheet on a printer the user picks in the system's print dialog.
void MainWindow::onPrintDialogMenu()
{
    if (!isShown(m_editor))
        return;
    QPrinter printer;
    printer.setResolution(summarySheetResolution());
    printer.setPageLayout(summarySheetPageLayout());
    printer.setDocName(m_editor->profile().name());
    printer.setCreator(QStringLiteral("Sparkwright ") + programVersion());
    if (!userPrompts().choosePrinter(this, printer))
        return;
    const qint32 libraryValue = m_data.library() ? m_data.library()->libraryValue() : 0;
    if (!paintSummarySheetDocument(printer, m_editor->profile(),
            summarySheetHeaderLine(libraryValue, QDateTime::currentDateTime())))
        userPrompts().warn(this, tr("Print"), tr("The sheet could not be printed."), tr("OK"));
}

void MainWindow::updateExportActions()
{
    const bool comparing = m_currentWidget == m_wizard && m_wizard->shownGraph();
    m_ui->actionExportGraph->setEnabled(isShown(m_editor) || comparing);
    m_ui->actionExportValues->setEnabled(comparing);
}

// The graph as the page shows it, at its size on the screen: the editor's map without a point
// selected, or the comparison without its hidden profiles. The file's type is the one its
// suffix names, else the one chosen in the dialog, whose suffix is then added.
void MainWindow::onExportGraphMenu()
{
    QSize size;
    PlotDrawing drawing;
    QString name;
    if (isShown(m_editor)) {
        const Profile profile = m_editor->profile();
        size = m_editor->graphSize();
        drawing = [profile](MapPlotter &plotter, QPainter &painter) {
            plotter.paintSingle(painter, profile, -1, true, true);
        };
        name = suggestedFileName(profile.name(), tr("profile"));
    } else if (const MultiGraphForm *graph = m_currentWidget == m_wizard ? m_wizard->shownGraph() : nullptr) {
        size = graph->graphSize();
        drawing = graph->drawing();
        name = tr("comparison");
    } else {
        return;
    }
    const QString title = tr("Export graph");
    const QList<PlotFormat> formats = plotFormats();
    QStringList filters;
    for (const PlotFormat format : formats) {
        filters << (format == PlotFormat::Svg ? tr("SVG drawings") : tr("PNG images"))
                + QStringLiteral(" (*.%1)").arg(plotFormatSuffix(format));
    }
    QString chosenFilter;
    const QString typed = userPrompts().saveFileName(this, title, name + QLatin1String(".png"), filters, chosenFilter);
    if (typed.isEmpty())
        return;
    const PlotFormat chosen = formats.value(std::max(0, int(filters.indexOf(chosenFilter))));
    const QString path = pathWithPlotSuffix(typed, chosen);
    const PlotFormat format = plotFormatOfPath(path).value_or(chosen);
    if (CProfileFiles::write(this, path, title, tr("Exporting the graph failed"), plotFileBytes(format, size, drawing)))
        statusBar()->showMessage(tr("Exported to %1").arg(QDir::toNativeSeparators(path)), kSavedMessageMs);
}

// The values of the profiles the comparison shows, for a spreadsheet.
void MainWindow::onExportValuesMenu()
{
    const MultiGraphForm *graph = m_currentWidget == m_wizard ? m_wizard->shownGraph() : nullptr;
    if (!graph)
        return;
    const QString title = tr("Export values as CSV");
    QString path = userPrompts().saveFileName(this, title, tr("comparison") + QLatin1String(".csv"),
        tr("CSV files") + QLatin1String(" (*.csv)"));
    if (path.isEmpty())
        return;
    if (QFileInfo(path).suffix().isEmpty())
        path += QLatin1String(".csv");
    if (CProfileFiles::write(this, path, title, tr("Exporting the values failed"), graph->valuesCsv()))
        statusBar()->showMessage(tr("Exported to %1").arg(QDir::toNativeSeparators(path)), kSavedMessageMs);
}

// On the editor the title names the profile and its file, and marks unsaved changes.
void MainWindow::updateTitle()
{
    const bool editing = isShown(m_editor);
    if (!editing) {
        setWindowTitle(QStringLiteral("Sparkwright"));
    } else {
        const QString file = QFileInfo(m_editor->profileFilePath()).fileName();
        const QString name = m_editor->profile().name();
        setWindowTitle(file.isEmpty() ? tr("%1[*] - Sparkwright").arg(name)
                                      : tr("%1 (%2)[*] - Sparkwright").arg(name, file));
    }
    setWindowModified(editing && m_editor->profile().isModified());
}

// The pages keep their prompts as status tips, which the prompt line shows; the status bar is
// for messages such as a save's confirmation, not for tips shown while the pointer passes.
bool MainWindow::event(QEvent *event)
{
    if (event->type() == QEvent::StatusTip)
        return true;
    return QMainWindow::event(event);
}

// ---- language ----

// The editor sets its prompt again after the frame was told of the switch; the change event
// that the switch posts arrives once every part has its new texts.
void MainWindow::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange)
        refreshPrompt();
    QMainWindow::changeEvent(event);
}

void MainWindow::retranslate(int language)
{
    m_ui->retranslateUi(this);
    if (m_devicesForm)
        m_devicesForm->retranslate(language);
    updateUndoActions();
    updateTitle();
    setFixedTexts();
    paintBanner();
    // The start page sets its own texts when it is told; the others are prepared here.
    if (isShown(m_editor))
        prepareEditorFrame();
    else if (isShown(m_confirmation))
        prepareConfirmationFrame();
    else if (isShown(m_waitForm))
        setWaitPrompt();
    refreshPrompt();
}
