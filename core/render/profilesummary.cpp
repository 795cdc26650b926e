#include "render/profilesummary.h"

#include "profile/profile.h"

#include <QCoreApplication>
#include <QLocale>

QString sensorAdvanceText(const Profile &profile)
{
    return QLocale().toString(profile.sensorCoefficients().k0, 'f', 1) + QChar(0x00B0);
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
