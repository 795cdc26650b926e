#include "editor/editorform.h"

#include "editor/cblinker.h"
#include "editor/cprofileedit.h"
#include "editor/flagsform.h"
#include "editor/graphform.h"
#include "editor/hintdialog.h"
#include "editor/nameform.h"
#include "editor/notesform.h"
#include "editor/tableform.h"
#include "profile/defaultlibrary.h"
#include "profile/mapvalidation.h"
#include "profile/profilefile.h"
#include "profile/recentprofiles.h"
#include "profile/suggestedfilename.h"
#include "shell/clanguageswitcher.h"
#include "shell/cprofilefiles.h"
#include "shell/iuserprompts.h"
#include "shell/problemink.h"

#include "ui_editorform.h"

#include <QApplication>
#include <QEvent>

namespace {

constexpr int kTableHintWidth = 160;
constexpr int kGraphHintWidth = 230;

// Leading empty markup makes the message box take the text as rich text.
const QString kRichTextMark = QStringLiteral("<nobr></nobr>");

} // namespace

EditorForm::EditorForm(
    const DefaultLibrary *library, CLanguageSwitcher &switcher, HintDialog &hintDialog, QWidget *parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::EditorForm>())
    , m_library(library)
    , m_switcher(switcher)
    , m_hintDialog(hintDialog)
{
    Q_INIT_RESOURCE(images);
    m_ui->setupUi(this);
    setProblemInk(m_ui->problemLabel);

    m_nameForm = new NameForm(this, this);
    m_ui->nameLayout->addWidget(m_nameForm);
    m_tableForm = new TableForm(this, this);
    m_ui->tableLayout->addWidget(m_tableForm);
    m_graphForm = new GraphForm(this, this);
    m_ui->graphLayout->addWidget(m_graphForm);
    m_flagsForm = new FlagsForm(this, &m_hintDialog, this);
    m_ui->flagsLayout->addWidget(m_flagsForm);
    m_notesForm = new NotesForm(this, this);
    m_ui->notesLayout->addWidget(m_notesForm);

    m_ui->plainTextEditInformation->viewport()->setCursor(Qt::ArrowCursor);

    m_tableHint = new CHintLabel(this, kTableHintWidth, this);
    m_graphHint = new CHintLabel(this, kGraphHintWidth, this);
    m_tableHint->hide();
    m_graphHint->hide();
    m_tableForm->setHintLabel(m_tableHint);
    m_graphForm->setHintLabel(m_graphHint);
    // The table view gets its final size only after the page's own resize has been handled, so
    // its resizes re-centre the label as well.
    m_tableView = m_tableHint->parentWidget();
    m_tableView->installEventFilter(this);
    m_blinker = new CBlinker(this);
    m_blinker->setLabels({m_tableHint, m_graphHint});

    setTexts();
    installEventFilter(this);
    setTabOrderAsSeen();

    connect(m_ui->hintButtonMap, &QToolButton::clicked, this, &EditorForm::onIgnitionMapHint);
    connect(
        &m_history, &QUndoStack::indexChanged, this, [this] { m_profile.setModified(!m_history.isClean()); });
}

EditorForm::~EditorForm() = default;

// Tab walks the page as it reads: the name and Rename, the tabs, the map table and its sort
// button (while shown), the graph, the map's hint button, then each setting followed by its own hint button.
void EditorForm::setTabOrderAsSeen()
{
    QWidget *chain[] = {m_nameForm->findChild<QWidget *>(QStringLiteral("lineEditName")),
        m_nameForm->findChild<QWidget *>(QStringLiteral("pushButtonRename")), m_ui->tabWidget,
        m_tableForm->findChild<QWidget *>(QStringLiteral("tableView")),
        m_tableForm->findChild<QWidget *>(QStringLiteral("toolButtonSort")), m_graphForm, m_ui->hintButtonMap,
        m_flagsForm->findChild<QWidget *>(QStringLiteral("spinBoxIgnitionVoltage"))};
    for (size_t i = 1; i < std::size(chain); ++i) {
        if (chain[i - 1] && chain[i])
            setTabOrder(chain[i - 1], chain[i]);
    }
}

void EditorForm::setTexts()
{
    m_tableHint->setHintText(tr("Click to edit"));
    m_graphHint->setHintText(tr("Drag points to edit"));
    setStatusTip(prompt());
}

// The main window shows it as the page's prompt line.
QString EditorForm::prompt() const
{
    return tr("Edit your profile. Drag the points in the graph or type into the table.");
}

void EditorForm::setProfile(const Profile &profile, const QString &filePath)
{
    m_profile = profile;
    m_filePath = filePath;
    m_profile.setKind(ProfileKind::Custom);
    m_profileLoaded = true;
    refresh();
    m_ui->tabWidget->setCurrentWidget(m_ui->tabParameters);
    m_profile.setModified(false);
    m_saved = m_profile;
    m_recorded = m_profile;
    m_history.clear();
    if (!m_hintsStarted) {
        m_hintsStarted = true;
        m_blinker->startBlinking();
    }
}

void EditorForm::refresh()
{
    m_nameForm->showName(m_profile.name());
    showInformation();
    m_notesForm->showNotes(m_profile.notes());
    m_flagsForm->setProfile(&m_profile);
    m_tableForm->setProfile(&m_profile);
    m_graphForm->showProfile(&m_profile, m_tableForm->currentRow(), true);
    showChecks();
}

// The checker's verdict: the faulty cells marked, the first problem in words under the map,
// and the same words on the graph.
void EditorForm::showChecks()
{
    const MapValidation validation = validate(m_profile);
    m_tableForm->showValidation(validation);
    const QStringList problems = validation.problems();
    m_ui->problemLabel->setText(problems.value(0));
    m_ui->problemLabel->setVisible(!problems.isEmpty());
    m_graphForm->setToolTip(problems.join(QLatin1Char('\n')));
}

void EditorForm::showInformation()
{
    const QString text = m_profile.extraText(m_switcher.language());
    m_ui->plainTextEditInformation->setPlainText(text.isEmpty() ? tr("No information available") : text);
}

// Asked whatever page shows: the profile lives on behind the other pages, and every path that
// replaces it or ends the program comes through here.
bool EditorForm::confirmDiscard()
{
    if (!m_profileLoaded || !m_profile.isModified())
        return true;
    const QString text = kRichTextMark
        + tr("Your current CDI profile <b>%1</b> has unsaved changes.<br><br>"
             "Do you want to save them?")
              .arg(m_profile.name().toHtmlEscaped());
    // Cancel is the default and Escape's answer: a stray Enter loses nothing.
    const int answer = userPrompts().ask(
        this, tr("Unsaved changes"), text, {tr("&Save"), tr("&Discard"), tr("Cancel")}, 2, 2);
    if (answer == 0)
        return saveProfile();
    if (answer != 1)
        return false;
    // Discarded edits are gone: the profile goes back to what was last loaded or saved, so
    // nothing brings them back unprotected.
    m_profile = m_saved;
    m_recorded = m_profile;
    m_history.clear();
    refresh();
    return true;
}

void EditorForm::resetProfile()
{
    // A profile whose template is not in the library has nothing to go back to.
    const Profile *factory = m_library ? m_library->profileForType(m_profile.motorbikeType()) : nullptr;
    if (!factory)
        return;
    const QString text = kRichTextMark
        + tr("This will reset your profile to the factory settings of <b>%1</b>.")
              .arg(factory->name().toHtmlEscaped());
    const int answer
        = userPrompts().ask(this, tr("Reset profile"), text, {tr("Reset profile"), tr("Cancel")}, 0, 1);
    if (answer != 0)
        return;
    // The template's modified flag comes along too, so a reset profile has no unsaved changes.
    // One undoable step; the reset profile counts as the saved one.
    m_profile = *factory;
    record(tr("reset to defaults"));
    m_history.setClean();
    m_profile.setModified(false);
    m_saved = m_profile;
    refresh();
}

bool EditorForm::saveProfile()
{
    return m_filePath.isEmpty() ? saveAs() : writeTo(m_filePath);
}

bool EditorForm::saveAs()
{
    const QString suggested = m_filePath.isEmpty()
        ? suggestedFileName(m_profile.name(), tr("profile")) + QLatin1String(".cdi")
        : m_filePath;
    const QString path = userPrompts().saveFileName(this, tr("Save CDI profile"), suggested, CProfileFiles::filter());
    return !path.isEmpty() && writeTo(path);
}

bool EditorForm::writeTo(const QString &path)
{
    if (!CProfileFiles::write(
            this, path, tr("Save CDI profile"), tr("Saving profile failed"), profileFileBytes(m_profile)))
        return false;
    m_filePath = path;
    markSaved();
    CRecentProfiles().add(path, m_profile.name());
    emit saved(path);
    return true;
}

void EditorForm::markSaved()
{
    m_profile.setModified(false);
    m_saved = m_profile;
    m_recorded = m_profile;
    m_history.setClean();
}

void EditorForm::setActive(bool active)
{
    if (active) {
        setStatusTip(prompt());
        show();
        // The map is what the editor is for: the keyboard starts in it.
        m_tableView->setFocus(Qt::OtherFocusReason);
    } else {
        hide();
    }
}

void EditorForm::onBack()
{
    if (confirmDiscard())
        emit leaveRequested();
}

void EditorForm::onNext()
{
    emit programmingRequested(m_profile);
}

void EditorForm::retranslate(int)
{
    m_ui->retranslateUi(this);
    setTexts();
    m_tableForm->retranslate();
    m_notesForm->retranslate();
    m_hintDialog.retranslate();
    refresh();
}

void EditorForm::updateGraph()
{
    m_graphForm->showProfile(&m_profile, m_tableForm->currentRow(), true);
    showChecks();
}

void EditorForm::setProfileName(const QString &name)
{
    // Confirming the name unchanged is no change.
    if (name != m_profile.name()) {
        m_profile.setName(name);
        record(tr("rename"));
    }
    m_nameForm->showName(m_profile.name());
}

void EditorForm::setProfileNotes(const QString &notes)
{
    if (notes != m_profile.notes()) {
        m_profile.setNotes(notes);
        record(tr("edit of the notes"));
    }
    m_notesForm->showNotes(m_profile.notes());
}

void EditorForm::onMapChanged(bool rescale)
{
    m_tableForm->setProfile(&m_profile);
    m_graphForm->showProfile(&m_profile, m_tableForm->currentRow(), rescale);
    showChecks();
}

void EditorForm::onPointSelected(int index, bool rescale)
{
    m_tableForm->selectRow(index);
    m_graphForm->showProfile(&m_profile, index, rescale);
}

void EditorForm::onEdited(Edit edit, int point)
{
    switch (edit) {
    case Edit::Cell:
        record(tr("edit of point %1").arg(point + 1));
        break;
    case Edit::Drag:
        record(tr("drag of point %1").arg(point + 1));
        break;
    case Edit::Sort:
        record(tr("sort of the map"));
        break;
    case Edit::Setting:
        record(tr("change of settings"));
        break;
    case Edit::Paste:
        record(tr("paste"));
        break;
    case Edit::Operation:
        record(tr("change of the selected points"));
        break;
    }
}

// The change is already in the working profile; the step keeps both sides of it.
void EditorForm::record(const QString &step)
{
    m_history.push(
        new CProfileEdit(step, m_recorded, m_profile, [this](const Profile &p) { applySnapshot(p); }));
    m_recorded = m_profile;
    // Back at the saved state after undoing counts as unmodified, anywhere else as modified.
    m_profile.setModified(!m_history.isClean());
}

void EditorForm::applySnapshot(const Profile &profile)
{
    m_profile = profile;
    m_recorded = profile;
    refresh();
}

void EditorForm::onHintLabelTouched()
{
    m_tableForm->hideHintLabel();
    m_graphForm->hideHintLabel();
    m_blinker->stopBlinking();
}

void EditorForm::onIgnitionMapHint()
{
    m_hintDialog.showHint(kIgnitionMapHint);
}

bool EditorForm::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == this && event->type() == QEvent::Close)
        QApplication::closeAllWindows();
    else if (event->type() == QEvent::Resize && (watched == this || watched == m_tableView))
        m_tableForm->centreHintLabel();
    // The notices over the map go when the keyboard starts working there, as they do for the mouse.
    else if (event->type() == QEvent::KeyPress && watched == m_tableView && m_blinker->isRunning())
        onHintLabelTouched();
    return QWidget::eventFilter(watched, event);
}

QSize EditorForm::graphSize() const
{
    return m_graphForm->size();
}
