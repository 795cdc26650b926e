#include "render/profilesummary.h"

#include "profile/mapvalidation.h"

#include "profile/profile.h"

#include <QCoreApplication>
#include <QLocale>

QString sensorAdvanceText(const Profile &profile)
{
    return QLocale().toString(profile.sensorCoefficients().k0, 'f', 1) + QChar(0x00B0);
}

QString summaryMapTableHtml(const Profile &profile)
{
    QString html = QStringLiteral("<html><table><tr><td><b>");
    html += QCoreApplication::translate("SummaryForm", "RPM");
    html += QStringLiteral("</b></td><td><b>");
    html += QCoreApplication::translate("SummaryForm", "Angle");
    html += QStringLiteral("</b></td></tr>");
    const IgnitionMap &map = profile.map();
    const MapValidation validation = validate(profile);
    // A value the checker finds fault with stands out in bold red, as in the editor's table.
    const auto cell = [&](int row, int column, const QString &value) {
        const bool faulty = !validation.cellMessage(row, column, map).isEmpty();
        return QStringLiteral("<td align=right>")
            + (faulty ? QStringLiteral("<b><font color=#e03c3c>") + value + QStringLiteral("</font></b>") : value)
            + QStringLiteral("</td>");
    };
    for (int i = 0; i < kMapPointCount; ++i) {
        html += QStringLiteral("<tr>") + cell(i, 0, QString::number(map.point(i).rpm))
            + cell(i, 1, QString::number(map.point(i).angle) + QChar(0x00B0)) + QStringLiteral("</tr>");
    }
    html += QStringLiteral("</table></html>");
    return html;
}

QString summaryStatusLine(const Profile &profile)
{
    const QString separator = QStringLiteral("&nbsp;<font color=gray>|</font>&nbsp;");
    auto label = [](const QString &text) { return QStringLiteral("<b>") + text + QStringLiteral("</b>: "); };

    QString line = QStringLiteral("<nobr></nobr>");
    line += label(QCoreApplication::translate("SummaryForm", "Ignition voltage"))
        + QString::number(profile.voltage()) + QStringLiteral(" V") + separator;

    line += label(QCoreApplication::translate("SummaryForm", "Side stand monitoring"));
    if (profile.sideStandMonitoring()) {
        line += QCoreApplication::translate("SummaryForm", "enabled") + QStringLiteral("; ");
        line += profile.groundEnablesIgnition()
            ? QCoreApplication::translate("SummaryForm", "ground enables ignition")
            : QCoreApplication::translate("SummaryForm", "ground blocks ignition");
    } else {
        line += QCoreApplication::translate("SummaryForm", "disabled");
    }
    line += separator;

    line += label(QCoreApplication::translate("SummaryForm", "Pulse generator edge"));
    line += profile.pickUpRisingEdge() ? QCoreApplication::translate("SummaryForm", "trigger with rising edge")
                                       : QCoreApplication::translate("SummaryForm", "trigger with falling edge");
    line += separator;

    line += label(QCoreApplication::translate("SummaryForm", "Sensor advance"));
    line += sensorAdvanceText(profile);
    return line;
}
