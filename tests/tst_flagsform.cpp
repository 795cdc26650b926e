// The settings beside the map, driven through their real controls: what a profile fills in,
// what each control writes back, the side-stand rule and the hint buttons.
#include "editor/flagsform.h"
#include "editor/hintdialog.h"
#include "editor/iprofileeditormain.h"
#include "i18n/clanguageswitcher.h"
#include "profile/hintcatalog.h"
#include "profile/profile.h"
#include "tests/widgettestmain.h"

#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QGroupBox>
#include <QLabel>
#include <QRadioButton>
#include <QSpinBox>
#include <QToolButton>
#include <QTranslator>

namespace {

class FakeEditor : public IProfileEditorMain
{
public:
    void updateGraph() override { ++graphUpdates; }
    void setProfileName(const QString &) override { }
    void setProfileNotes(const QString &) override { }
    void onMapChanged(bool) override { }
    void onPointSelected(int, bool) override { }

    int graphUpdates = 0;
};

struct Settings
{
    bool monitoring = false;
    bool groundEnables = true;
    bool rising = false;
    bool edgeSelectable = true;
    int voltage = 170;
    double k0 = 28.0;
    quint32 sensorMode = 0;
};

Profile profileWith(const Settings &settings)
{
    Profile profile;
    profile.setVoltage(settings.voltage);
    profile.setPickUpEdgeSelectable(settings.edgeSelectable);
    profile.setK1(-0.001, -0.002);
    ProfileFlags flags;
    flags.sideStandMonitoring = settings.monitoring;
    flags.groundEnablesIgnition = settings.groundEnables;
    flags.pickUpRisingEdge = settings.rising;
    flags.sensorMode = settings.sensorMode;
    profile.setFlags(flags);
    profile.setSensorCoefficients({settings.k0, -0.0004, -1e-8});
    profile.setModified(false);
    return profile;
}

HintCatalog numberedCatalog()
{
    HintCatalog catalog;
    for (int i = 0; i < 5; ++i) {
        catalog.append({HintText {QStringLiteral("Hint %1").arg(i), QStringLiteral("<p>Text %1</p>").arg(i)},
            HintText {QStringLiteral("Hinweis %1").arg(i), QStringLiteral("<p>Text %1 de</p>").arg(i)}});
    }
    return catalog;
}

} // namespace

Q_DECLARE_METATYPE(Settings)

class TestFlagsForm : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void fillsTheControlsWithoutModifying_data();
    void fillsTheControlsWithoutModifying();
    void controlsWriteTheProfile_data();
    void controlsWriteTheProfile();
    void sideStandRule_data();
    void sideStandRule();
    void hintButtonsOpenTheirHints_data();
    void hintButtonsOpenTheirHints();
    void languageChangeRetranslates();

private:
    void load(const Settings &settings);
    template<typename T> T *child(const QString &name) const { return m_form->findChild<T *>(name); }
    // Check boxes and radio buttons react to clicks on their indicator and text, not on the
    // empty space a layout may give them.
    void clickIndicator(QAbstractButton *button);
    void typeInto(QAbstractSpinBox *box, const QString &text);

    std::unique_ptr<FakeEditor> m_editor;
    std::unique_ptr<CLanguageSwitcher> m_switcher;
    HintCatalog m_catalog;
    std::unique_ptr<HintDialog> m_hints;
    std::unique_ptr<FlagsForm> m_form;
    Profile m_profile;
};

void TestFlagsForm::init()
{
    m_editor = std::make_unique<FakeEditor>();
    m_switcher = std::make_unique<CLanguageSwitcher>();
    m_catalog = numberedCatalog();
    m_hints = std::make_unique<HintDialog>(&m_catalog, *m_switcher);
    m_form = std::make_unique<FlagsForm>(m_editor.get(), m_hints.get());
    m_form->show();
    QApplication::setActiveWindow(m_form.get());
    QVERIFY(QTest::qWaitForWindowActive(m_form.get()));
}

void TestFlagsForm::cleanup()
{
    m_form.reset();
    m_hints.reset();
    m_switcher.reset();
    m_editor.reset();
}

void TestFlagsForm::load(const Settings &settings)
{
    m_profile = profileWith(settings);
    m_form->setProfile(&m_profile);
    m_editor->graphUpdates = 0;
}

void TestFlagsForm::clickIndicator(QAbstractButton *button)
{
    QTest::mouseClick(button, Qt::LeftButton, Qt::NoModifier, QPoint(8, button->height() / 2));
}

void TestFlagsForm::typeInto(QAbstractSpinBox *box, const QString &text)
{
    QTest::mouseClick(box, Qt::LeftButton, Qt::NoModifier, QPoint(box->width() / 3, box->height() / 2));
    QTest::keyClick(box, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(box, text);
}

void TestFlagsForm::fillsTheControlsWithoutModifying_data()
{
    QTest::addColumn<Settings>("settings");
    Settings off;
    QTest::newRow("monitoring off") << off;
    Settings offBlocking;
    offBlocking.groundEnables = false;
    QTest::newRow("monitoring off keeps the polarity shown") << offBlocking;
    Settings blocking {true, false, true, true, 250, 45.0, 0};
    QTest::newRow("monitoring on, ground blocks, rising edge") << blocking;
    Settings fixedEdge {true, true, false, false, 100, 10.0, 0};
    QTest::newRow("edge not selectable") << fixedEdge;
}

void TestFlagsForm::fillsTheControlsWithoutModifying()
{
    QFETCH(Settings, settings);
    load(settings);

    QCOMPARE(child<QSpinBox>("spinBoxIgnitionVoltage")->value(), settings.voltage);
    QCOMPARE(child<QDoubleSpinBox>("doubleSpinBoxHall")->value(), settings.k0);
    QCOMPARE(child<QCheckBox>("checkBoxSideStand")->isChecked(), settings.monitoring);
    auto *enables = child<QRadioButton>("radioButtonGroundEnables");
    auto *blocks = child<QRadioButton>("radioButtonGroundDisables");
    QCOMPARE(enables->isChecked(), settings.groundEnables);
    QCOMPARE(blocks->isChecked(), !settings.groundEnables);
    // Without monitoring the polarity means nothing, so it cannot be chosen.
    QCOMPARE(enables->isEnabled(), settings.monitoring);
    QCOMPARE(blocks->isEnabled(), settings.monitoring);
    QCOMPARE(child<QRadioButton>("radioButtonPickUpPos")->isChecked(), settings.rising);
    QCOMPARE(child<QRadioButton>("radioButtonPickUpNeg")->isChecked(), !settings.rising);
    QCOMPARE(child<QGroupBox>("groupBoxPickUp")->isVisible(), settings.edgeSelectable);

    QVERIFY(!m_profile.isModified());
    QCOMPARE(m_editor->graphUpdates, 0);
}

void TestFlagsForm::controlsWriteTheProfile_data()
{
    QTest::addColumn<Settings>("before");
    QTest::addColumn<QString>("control");
    QTest::addColumn<QString>("typed"); // empty: the control is clicked
    QTest::addColumn<Settings>("after");
    QTest::addColumn<double>("k1");
    QTest::addColumn<bool>("modified");
    QTest::addColumn<int>("graphUpdates");

    const Settings base {true, true, false, true, 170, 28.0, 0};
    Settings s = base;
    s.voltage = 185;
    QTest::newRow("typing a voltage") << base << "spinBoxIgnitionVoltage"
                                      << "185" << s << -0.0004 << true << 0;
    s = base;
    s.k0 = 20.0;
    QTest::newRow("typing a sensor advance redraws the graph") << base << "doubleSpinBoxHall"
                                                               << "20" << s << -0.0004 << true << 1;
    s = base;
    s.rising = true;
    QTest::newRow("rising edge redraws the graph") << base << "radioButtonPickUpPos"
                                                   << "" << s << -0.0004 << true << 1;
    Settings moded = base;
    moded.sensorMode = 1;
    s = moded;
    s.rising = true;
    QTest::newRow("with a sensor mode the edge chooses K1") << moded << "radioButtonPickUpPos"
                                                            << "" << s << -0.001 << true << 1;
    QTest::newRow("the edge already chosen changes nothing") << base << "radioButtonPickUpNeg"
                                                             << "" << base << -0.0004 << false << 0;
    s = base;
    s.groundEnables = false;
    QTest::newRow("ground blocks ignition") << base << "radioButtonGroundDisables"
                                            << "" << s << -0.0004 << true << 0;
    Settings blocking = base;
    blocking.groundEnables = false;
    QTest::newRow("ground enables ignition") << blocking << "radioButtonGroundEnables"
                                             << "" << base << -0.0004 << true << 0;
    Settings off = base;
    off.monitoring = false;
    QTest::newRow("the polarity cannot be chosen without monitoring") << off << "radioButtonGroundDisables"
                                                                      << "" << off << -0.0004 << false << 0;
}

void TestFlagsForm::controlsWriteTheProfile()
{
    QFETCH(Settings, before);
    QFETCH(QString, control);
    QFETCH(QString, typed);
    QFETCH(Settings, after);
    QFETCH(double, k1);
    QFETCH(bool, modified);
    QFETCH(int, graphUpdates);
    load(before);
    const SensorCoefficients old = m_profile.sensorCoefficients();

    if (typed.isEmpty())
        clickIndicator(child<QAbstractButton>(control));
    else
        typeInto(child<QAbstractSpinBox>(control), typed);

    QCOMPARE(m_profile.voltage(), after.voltage);
    QCOMPARE(m_profile.sideStandMonitoring(), after.monitoring);
    QCOMPARE(m_profile.groundEnablesIgnition(), after.groundEnables);
    QCOMPARE(m_profile.pickUpRisingEdge(), after.rising);
    QCOMPARE(m_profile.sensorMode(), after.sensorMode);
    QCOMPARE(m_profile.sensorCoefficients().k0, after.k0);
    QCOMPARE(m_profile.sensorCoefficients().k1, k1);
    QCOMPARE(m_profile.sensorCoefficients().k2, after.sensorMode == 0 ? old.k2 : 0.0);
    QCOMPARE(m_profile.isModified(), modified);
    QCOMPARE(m_editor->graphUpdates, graphUpdates);
}

void TestFlagsForm::sideStandRule_data()
{
    QTest::addColumn<bool>("groundEnables");
    QTest::newRow("ground enables ignition") << true;
    QTest::newRow("ground blocks ignition") << false;
}

// Switching monitoring on and off again frees and locks the polarity, which is kept meanwhile.
void TestFlagsForm::sideStandRule()
{
    QFETCH(bool, groundEnables);
    Settings settings;
    settings.groundEnables = groundEnables;
    load(settings);
    auto *check = child<QCheckBox>("checkBoxSideStand");
    auto *enables = child<QRadioButton>("radioButtonGroundEnables");
    auto *blocks = child<QRadioButton>("radioButtonGroundDisables");

    clickIndicator(check);
    QVERIFY(check->isChecked());
    QVERIFY(m_profile.sideStandMonitoring());
    QVERIFY(m_profile.isModified());
    QVERIFY(enables->isEnabled() && blocks->isEnabled());
    QCOMPARE(enables->isChecked(), groundEnables);
    QCOMPARE(m_profile.groundEnablesIgnition(), groundEnables);

    clickIndicator(check);
    QVERIFY(!m_profile.sideStandMonitoring());
    QVERIFY(!enables->isEnabled() && !blocks->isEnabled());
    QCOMPARE(m_profile.groundEnablesIgnition(), groundEnables);
    QCOMPARE(m_editor->graphUpdates, 0);
}

void TestFlagsForm::hintButtonsOpenTheirHints_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<int>("language");
    QTest::addColumn<QString>("title");
    QTest::newRow("voltage") << "hintButtonVoltage" << 0 << "Hint 0";
    QTest::newRow("side stand") << "hintButtonSideStand" << 0 << "Hint 1";
    QTest::newRow("pick-up edge") << "hintButtonPickUp" << 0 << "Hint 2";
    QTest::newRow("sensor advance") << "hintButtonSensorAdvance" << 0 << "Hint 3";
    QTest::newRow("sensor advance in German") << "hintButtonSensorAdvance" << 1 << "Hinweis 3";
}

void TestFlagsForm::hintButtonsOpenTheirHints()
{
    QFETCH(QString, button);
    QFETCH(int, language);
    QFETCH(QString, title);
    load(Settings {});
    m_switcher->setLanguage(language);
    QVERIFY(!m_hints->isVisible());

    QTest::mouseClick(child<QToolButton>(button), Qt::LeftButton);
    QVERIFY(m_hints->isVisible());
    QCOMPARE(m_hints->findChild<QLabel *>(QStringLiteral("titleLabel"))->text(), title);
    QVERIFY(!m_profile.isModified());
}

void TestFlagsForm::languageChangeRetranslates()
{
    class German : public QTranslator
    {
    public:
        bool isEmpty() const override { return false; }
        QString translate(const char *context, const char *source, const char *, int) const override
        {
            if (QByteArray(context) == "FlagsForm" && QByteArray(source) == "Ignition voltage")
                return QStringLiteral("Zündspannung");
            return QString();
        }
    } german;
    load(Settings {});
    QCoreApplication::installTranslator(&german);
    QCoreApplication::processEvents(); // the language change is posted to the widgets
    QCOMPARE(child<QGroupBox>("groupBoxVoltage")->title(), QStringLiteral("Zündspannung"));
    QCoreApplication::removeTranslator(&german);
    QCoreApplication::processEvents();
    QCOMPARE(child<QGroupBox>("groupBoxVoltage")->title(), QStringLiteral("Ignition voltage"));
    // The texts change, the values stay.
    QCOMPARE(child<QSpinBox>("spinBoxIgnitionVoltage")->value(), 170);
}

SPARKWRIGHT_WIDGET_TEST_MAIN(TestFlagsForm)
#include "tst_flagsform.moc"
