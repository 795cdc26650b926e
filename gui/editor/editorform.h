#pragma once

#include "editor/chintlabel.h"
#include "editor/iprofileeditormain.h"
#include "profile/profile.h"
#include "shell/cbrowserwidget.h"
#include "shell/itranslatable.h"

#include <QUndoStack>
#include <QWidget>

#include <memory>

class CBlinker;
class CLanguageSwitcher;
class DefaultLibrary;
class FlagsForm;
class GraphForm;
class HintDialog;
class NameForm;
class NotesForm;
class TableForm;

namespace Ui {
class EditorForm;
}

// The page on which one profile is edited. It owns the working copy of the profile and is the
// hub of the widgets around it: the name, notes, table, graph and settings write into the
// working profile and report here, and the editor brings the others up to date. It knows
// whether there are unsaved changes and asks before they are dropped.
class EditorForm : public QWidget,
                   public CBrowserWidget,
                   public IProfileEditorMain,
                   public CHintLabelListener,
                   public ITranslatable
{
    Q_OBJECT

public:
    static constexpr int kIgnitionMapHint = 4;

    // The library (may be null) gives the templates for a reset.
    EditorForm(const DefaultLibrary *library, CLanguageSwitcher &switcher, HintDialog &hintDialog,
        QWidget *parent = nullptr);
    ~EditorForm() override;

    // Takes a copy of the profile as the user's own, with no unsaved changes; the file it came
    // from, if any, is where Save writes it.
    void setProfile(const Profile &profile, const QString &filePath = QString());
    // The file the profile came from or was last saved to; empty for a new one.
    QString profileFilePath() const { return m_filePath; }
    // Save writes to that file, and asks for one only where there is none; Save as always asks.
    // True once the file holds the profile; a failure has been told.
    bool saveProfile();
    bool saveAs();
    // Asks before unsaved changes are dropped, whatever page shows: Save, Discard or Cancel.
    // True when the profile may be left or replaced: it was saved, or discarded, which puts it
    // back to its last loaded or saved state.
    bool confirmDiscard();
    // Puts the profile back to its factory template, after asking.
    void resetProfile();
    // The working profile, for saving, printing and programming.
    const Profile &profile() const { return m_profile; }
    // After a save the profile has no unsaved changes.
    void markSaved();
    // True once a profile was loaded in this run.
    // The size the map's graph has on the page, for a picture of it as the user sees it.
    QSize graphSize() const;
    bool hasProfile() const { return m_profileLoaded; }
    // Every change since the profile was loaded; its clean state is the saved profile.
    QUndoStack &history() { return m_history; }

    void setActive(bool active) override;
    void onBack() override;
    void onNext() override;
    void retranslate(int language) override;

    void updateGraph() override;
    void setProfileName(const QString &name) override;
    void setProfileNotes(const QString &notes) override;
    void onMapChanged(bool rescale) override;
    void onPointSelected(int index, bool rescale) override;
    void onEdited(Edit edit, int point) override;

    void onHintLabelTouched() override;

signals:
    // Back, once the unsaved-changes question allowed leaving.
    void leaveRequested();
    // Next: the working profile goes to the confirmation before programming.
    void programmingRequested(const Profile &profile);
    // The profile was written to the file.
    void saved(const QString &path);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private slots:
    void onIgnitionMapHint();

private:
    void refresh();
    void showChecks();
    bool writeTo(const QString &path);
    void record(const QString &step);
    void applySnapshot(const Profile &profile);
    void showInformation();
    void setTexts();
    void setTabOrderAsSeen();
    QString prompt() const;

    std::unique_ptr<Ui::EditorForm> m_ui;
    const DefaultLibrary *m_library;
    CLanguageSwitcher &m_switcher;
    HintDialog &m_hintDialog;

    // The child widgets, owned through the widget tree.
    FlagsForm *m_flagsForm;
    NameForm *m_nameForm;
    NotesForm *m_notesForm;
    TableForm *m_tableForm;
    GraphForm *m_graphForm;

    Profile m_profile;
    QString m_filePath;
    // The profile as last loaded, saved or reset: what a discard goes back to.
    Profile m_saved;
    // The profile as the last step of the history left it.
    Profile m_recorded;
    QUndoStack m_history;
    bool m_hintsStarted = false;
    bool m_profileLoaded = false;

    CBlinker *m_blinker;
    CHintLabel *m_tableHint;
    CHintLabel *m_graphHint;
    // The table's view, over which its hint label floats.
    QWidget *m_tableView;
};
