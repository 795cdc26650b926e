#pragma once

#include "device/exchangeresult.h"

#include <QDate>
#include <QString>

class DefaultLibrary;

// The one wording of what happens on the line to the CDI, shared by the program's device pages
// and the command-line tool, which strips the markup. The texts are rich text.
struct ExchangeWords
{
    // Every result has a title of its own, every failure that of its exchange's failure.
    QString title;
    QString text;
};

ExchangeWords activityWords(DeviceExchange exchange);
// Once the request has gone out and the answer is due.
QString waitingWords();
// The library names motorbike types in the differences a read back finds.
ExchangeWords resultWords(const ExchangeResult &result, const DefaultLibrary *library = nullptr);
// In place of the import's result text where no editor takes the profile: where it was saved.
QString importSavedWords(const QString &path);
// Rich text, but for the invalid map and the last guard.
QString refusalWords(const DeviceRefusal &refusal);
// The same on one line, for the command-line tool.
QString plainRefusalWords(const DeviceRefusal &refusal);
// The name of a profile read from a CDI, which keeps none: when it was read, in the user's locale.
QString importedProfileName(const QDate &date);
// What programming the profile changes in the CDI, or why that cannot be shown; the
// differences one a line. The library names motorbike types by their templates.
QString previewWords(const ProgrammingPreview &preview, const DefaultLibrary *library = nullptr);
// While the user decides whether to program.
QString confirmationPendingWords();
