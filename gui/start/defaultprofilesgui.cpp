#include "start/defaultprofilesgui.h"

#include "profile/defaultlibrary.h"
#include "render/mapdescription.h"
#include "render/mapplotter.h"
#include "shell/caccessibility.h"
#include "shell/clanguageswitcher.h"

#include "ui_defaultprofilesgui.h"

#include <QEvent>

DefaultProfilesGui::DefaultProfilesGui(
    CLanguageSwitcher &switcher, const DefaultLibrary *library, QWidget *parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::DefaultProfilesGui>())
    , m_switcher(switcher)
    , m_library(library)
    , m_plotter(std::make_unique<MapPlotter>(1, 1))
{
    m_ui->setupUi(this);
    m_ui->previewLabel->installEventFilter(this);
    m_ui->previewLabel->setProperty("accessibleRole", QStringLiteral("graphic"));
    m_ui->informationText->viewport()->setCursor(Qt::ArrowCursor);
    if (m_library) {
        for (const Profile &profile : m_library->profiles())
            m_ui->comboBox->addItem(profile.name());
    }
    m_selected = m_ui->comboBox->currentIndex();
    connect(m_ui->comboBox, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
        &DefaultProfilesGui::onComboBoxSelected);
    showInformation();
}

DefaultProfilesGui::~DefaultProfilesGui() = default;

bool DefaultProfilesGui::hasProfiles() const
{
    return m_library && m_library->count() > 0;
}

std::optional<Profile> DefaultProfilesGui::selectedProfile() const
{
    const Profile *profile = m_library ? m_library->profileAt(m_selected) : nullptr;
    if (!profile)
        return std::nullopt;
    return *profile;
}

void DefaultProfilesGui::retranslate()
{
    m_ui->retranslateUi(this);
    showInformation();
}

void DefaultProfilesGui::onComboBoxSelected(int index)
{
    m_selected = index;
    showInformation();
}

void DefaultProfilesGui::showInformation()
{
    const Profile *profile = m_library ? m_library->profileAt(m_selected) : nullptr;
    QString text = profile ? profile->extraText(m_switcher.language()) : QString();
    if (text.isEmpty() && profile)
        text = tr("No information available");
    m_ui->informationText->setPlainText(text);
    // Described even while it is not drawn: the words cost little and stay current.
    m_ui->previewLabel->setAccessibleName(MapDescription::graphName(profile ? profile->name() : QString()));
    CAccessibility::setDescription(
        m_ui->previewLabel, profile ? MapDescription::describe(*profile) : QString());
    drawPreview();
}

// The map is drawn only while it can be seen: the chooser is built at start-up, long before
// anybody looks at it.
void DefaultProfilesGui::drawPreview()
{
    const Profile *profile = m_library ? m_library->profileAt(m_selected) : nullptr;
    if (!profile || !m_ui->previewLabel->isVisible()) {
        m_ui->previewLabel->clear();
        return;
    }
    const QSize size = m_ui->previewLabel->size();
    m_plotter->resize(size.width(), size.height(), devicePixelRatioF());
    m_plotter->drawSingle(*profile, -1, true, false);
    m_ui->previewLabel->setPixmap(QPixmap::fromImage(m_plotter->image()));
}

bool DefaultProfilesGui::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_ui->previewLabel && (event->type() == QEvent::Show || event->type() == QEvent::Resize))
        drawPreview();
    return QWidget::eventFilter(watched, event);
}
