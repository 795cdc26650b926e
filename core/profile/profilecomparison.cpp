#include "profile/profilecomparison.h"

#include "profile/profile.h"

#include <QCoreApplication>
#include <QHash>

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
