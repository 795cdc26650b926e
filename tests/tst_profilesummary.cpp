// The summary page's texts: the map as an HTML table and the one-line status of the settings.
#include "profile/profile.h"
#include "summary/profilesummary.h"

#include <QtTest>

namespace {

Profile profileWith(bool monitoring, bool groundEnables, bool risingEdge, quint32 sensorMode, double k0)
{
    Profile profile;
    ProfileFlags flags;
    flags.sideStandMonitoring = monitoring;
    flags.groundEnablesIgnition = groundEnables;
    flags.pickUpRisingEdge = risingEdge;
    flags.sensorMode = sensorMode;
    profile.setFlags(flags);
    profile.setSensorCoefficients({k0, 0.0, 0.0});
    profile.setVoltage(185);
    return profile;
}

} // namespace

Q_DECLARE_METATYPE(Profile)

class TestProfileSummary : public QObject
{
    Q_OBJECT

private slots:
    void statusLine_data();
    void statusLine();
    void mapTableShowsAllTenSlots();
};

void TestProfileSummary::statusLine_data()
{
    QTest::addColumn<Profile>("profile");
    QTest::addColumn<QString>("line");
    const QString bar = QStringLiteral("&nbsp;<font color=gray>|</font>&nbsp;");
    QTest::newRow("monitoring off: no ground text and no semicolon")
        << profileWith(false, false, false, 0, 10.0)
        << QStringLiteral("<nobr></nobr><b>Ignition voltage</b>: 185 V") + bar
            + QStringLiteral("<b>Side stand blocking</b>: disabled") + bar
            + QStringLiteral("<b>Pick-up transition</b>: negative") + bar
            + QStringLiteral("<b>Sensor advance</b>: 10.0\u00B0");
    QTest::newRow("monitoring on, ground blocks, rising edge, K0 rounded")
        << profileWith(true, false, true, 0, 27.26)
        << QStringLiteral("<nobr></nobr><b>Ignition voltage</b>: 185 V") + bar
            + QStringLiteral("<b>Side stand blocking</b>: enabled; ground blocks ignition") + bar
            + QStringLiteral("<b>Pick-up transition</b>: positive") + bar
            + QStringLiteral("<b>Sensor advance</b>: 27.3\u00B0");
    QTest::newRow("sensor mode 2 names the Hall sensor")
        << profileWith(true, true, false, 2, 31.04)
        << QStringLiteral("<nobr></nobr><b>Ignition voltage</b>: 185 V") + bar
            + QStringLiteral("<b>Side stand blocking</b>: enabled; ground enables ignition") + bar
            + QStringLiteral("<b>Pick-up transition</b>: negative") + bar
            + QStringLiteral("<b>Hall-sensor advance</b>: 31.0\u00B0");
}

void TestProfileSummary::statusLine()
{
    QFETCH(Profile, profile);
    QFETCH(QString, line);
    QCOMPARE(summaryStatusLine(profile), line);
}

void TestProfileSummary::mapTableShowsAllTenSlots()
{
    Profile profile;
    IgnitionMap map;
    map.setPoint(0, 1000, 12);
    map.setPoint(1, 2500, 18);
    map.setPoint(9, -5, 60);
    profile.setMap(map);
    QString expected = QStringLiteral("<html><table><tr><td><b>RPM</b></td><td><b>Angle</b></td></tr>");
    const int rows[10][2]
        = {{1000, 12}, {2500, 18}, {0, 0}, {0, 0}, {0, 0}, {0, 0}, {0, 0}, {0, 0}, {0, 0}, {-5, 60}};
    for (const auto &row : rows) {
        expected += QStringLiteral("<tr><td align=right>%1</td><td align=right>%2\u00B0</td></tr>")
                        .arg(row[0])
                        .arg(row[1]);
    }
    expected += QStringLiteral("</table></html>");
    QCOMPARE(summaryMapTableHtml(profile), expected);
}

QTEST_APPLESS_MAIN(TestProfileSummary)
#include "tst_profilesummary.moc"
