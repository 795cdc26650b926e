#include "profile/profilecomparison.h"

#include "profile/defaultlibrary.h"
#include "profile/deviceimage.h"
#include "profile/profile.h"

#include <QCoreApplication>
#include <QHash>
#include <QLocale>

#include <cmath>

QString profileListText(const Profile &profile)
{
    const QString kind = profile.isCustom() ? QCoreApplication::translate("CProfileItem", "Custom")
                                            : QCoreApplication::translate("CProfileItem", "Default");
    return kind + QLatin1String(": ") + profile.name();
}

QStringList comparisonLabels(const std::vector<Profile> &profiles)
{
    QStringList labels;
    QHash<QString, int> occurrences;
    for (const Profile &profile : profiles) {
        labels << profileListText(profile);
        ++occurrences[labels.last()];
    }
    QHash<QString, int> numbered;
    for (QString &label : labels) {
        if (occurrences.value(label) > 1)
            label += QStringLiteral(" (%1)").arg(++numbered[label]);
    }
    return labels;
}

QString comparedValueText(int value, int firstValue, const QString &unit)
{
    QString text = QString::number(value) + unit;
    const qint64 difference = qint64(value) - qint64(firstValue);
    if (difference != 0) {
        text += QStringLiteral(" (") + (difference > 0 ? QStringLiteral("+") : QString())
            + QString::number(difference) + QLatin1Char(')');
    }
    return text;
}

namespace {

QString csvField(const QString &text)
{
    if (!text.contains(QLatin1Char(',')) && !text.contains(QLatin1Char('"'))
        && !text.contains(QLatin1Char('\n')) && !text.contains(QLatin1Char('\r')))
        return text;
    QString quoted = text;
    quoted.replace(QLatin1Char('"'), QLatin1String("\"\""));
    return QLatin1Char('"') + quoted + QLatin1Char('"');
}

// A name that a spreadsheet would take for a formula ("=HYPERLINK(...)", "+1", "@SUM") is
// written as text, behind the apostrophe that spreadsheets take to mean just that.
QString csvText(const QString &text)
{
    static const QString formulaStarts = QStringLiteral("=+-@\t\r");
    if (!text.isEmpty() && formulaStarts.contains(text.front()))
        return QLatin1Char('\'') + text;
    return text;
}

} // namespace

QByteArray comparisonCsv(const std::vector<Profile> &profiles)
{
    QStringList header {QCoreApplication::translate("ProfileComparison", "Profile"),
        QCoreApplication::translate("ProfileComparison", "Kind")};
    for (int slot = 1; slot <= kMapPointCount; ++slot) {
        header << QCoreApplication::translate("ProfileComparison", "RPM %1").arg(slot)
               << QCoreApplication::translate("ProfileComparison", "Angle %1").arg(slot);
    }
    QStringList lines;
    const auto line = [](const QStringList &fields) {
        QStringList quoted;
        for (const QString &field : fields)
            quoted << csvField(field);
        return quoted.join(QLatin1Char(','));
    };
    lines << line(header);
    for (const Profile &profile : profiles) {
        QStringList fields {csvText(profile.name()),
            profile.isCustom() ? QCoreApplication::translate("ProfileComparison", "Custom")
                               : QCoreApplication::translate("ProfileComparison", "Default")};
        for (int i = 0; i < kMapPointCount; ++i) {
            const MapPoint point = profile.map().point(i);
            fields << QString::number(point.rpm) << QString::number(point.angle);
        }
        lines << line(fields);
    }
    return QByteArray("\xEF\xBB\xBF") + (lines.join(QLatin1String("\r\n")) + QLatin1String("\r\n")).toUtf8();
}

namespace {

// The fewest digits that give back the single-precision value the CDI holds, in the language's
// own way of writing numbers.
QString coefficientText(double value)
{
    int digits = 1;
    while (digits < 9 && float(QString::number(value, 'g', digits).toDouble()) != float(value))
        ++digits;
    // Whole degrees and volts in full, not as "2e+02".
    for (double whole = 10.0; whole <= std::abs(value) && digits < 9; whole *= 10.0) {
        if (whole > std::pow(10.0, digits - 1))
            ++digits;
    }
    return QLocale().toString(value, 'g', digits);
}

QString pointText(const MapPoint &point)
{
    if (point.isEmpty())
        return QCoreApplication::translate("ProfileComparison", "empty");
    return QCoreApplication::translate("ProfileComparison", "%1 rpm, %2°").arg(point.rpm).arg(point.angle);
}

QString typeText(double index, const DefaultLibrary *library)
{
    const Profile *profileTemplate = library ? library->profileForType(int(index)) : nullptr;
    if (profileTemplate)
        return profileTemplate->name();
    return QCoreApplication::translate("ProfileComparison", "type %1").arg(int(index));
}

} // namespace

QString differenceText(const ImageDifference &difference, const DefaultLibrary *library)
{
    using Field = ImageDifference::Field;
    const double oldValue = difference.oldValue;
    const double newValue = difference.newValue;
    QString label;
    QString before;
    QString after;
    // A setting that is on or off: its two words, the one for "on" first.
    const auto either = [&](const QString &on, const QString &off) {
        before = oldValue != 0.0 ? on : off;
        after = newValue != 0.0 ? on : off;
    };
    const auto numbers = [&](const QString &unit) {
        before = coefficientText(oldValue) + unit;
        after = coefficientText(newValue) + unit;
    };
    switch (difference.field) {
    case Field::MotorbikeType:
        label = QCoreApplication::translate("ProfileComparison", "Motorbike type");
        before = typeText(oldValue, library);
        after = typeText(newValue, library);
        break;
    case Field::Kind:
        label = QCoreApplication::translate("ProfileComparison", "Profile kind");
        either(QCoreApplication::translate("ProfileComparison", "Custom"),
            QCoreApplication::translate("ProfileComparison", "Default"));
        break;
    case Field::Slot:
        label = QCoreApplication::translate("ProfileComparison", "Slot %1").arg(difference.slot + 1);
        before = pointText(difference.oldPoint);
        after = pointText(difference.newPoint);
        break;
    case Field::Voltage:
        label = QCoreApplication::translate("ProfileComparison", "Ignition voltage");
        numbers(QStringLiteral(" V"));
        break;
    case Field::SideStandMonitoring:
        label = QCoreApplication::translate("ProfileComparison", "Side stand monitoring");
        either(QCoreApplication::translate("ProfileComparison", "enabled"),
            QCoreApplication::translate("ProfileComparison", "disabled"));
        break;
    case Field::GroundEnablesIgnition:
        label = QCoreApplication::translate("ProfileComparison", "Side stand monitoring");
        either(QCoreApplication::translate("ProfileComparison", "Ground enables ignition"),
            QCoreApplication::translate("ProfileComparison", "Ground blocks ignition"));
        break;
    case Field::PickUpRisingEdge:
        label = QCoreApplication::translate("ProfileComparison", "Pulse generator edge");
        either(QCoreApplication::translate("ProfileComparison", "Trigger with rising edge"),
            QCoreApplication::translate("ProfileComparison", "Trigger with falling edge"));
        break;
    case Field::SensorMode:
        label = QCoreApplication::translate("ProfileComparison", "Sensor mode");
        numbers(QString());
        break;
    case Field::Reimport:
        label = QCoreApplication::translate("ProfileComparison", "Reimporting");
        either(QCoreApplication::translate("ProfileComparison", "allowed"),
            QCoreApplication::translate("ProfileComparison", "not allowed"));
        break;
    case Field::FlagByte:
        label = QCoreApplication::translate("ProfileComparison", "Flag byte");
        before = QStringLiteral("%1").arg(int(oldValue), 2, 16, QLatin1Char('0'));
        after = QStringLiteral("%1").arg(int(newValue), 2, 16, QLatin1Char('0'));
        break;
    case Field::SensorAdvance:
        label = QCoreApplication::translate("ProfileComparison", "Sensor advance");
        numbers(QStringLiteral("°"));
        break;
    case Field::K1:
        label = QCoreApplication::translate("ProfileComparison", "Sensor coefficient K1");
        numbers(QString());
        break;
    case Field::K2:
        label = QCoreApplication::translate("ProfileComparison", "Sensor coefficient K2");
        numbers(QString());
        break;
    }
    return QCoreApplication::translate("ProfileComparison", "%1: %2 → %3").arg(label, before, after);
}
