#pragma once

#include <QString>

// Descriptive texts (tool tips, page explanations) mark the words to stress with braces:
// "{Program your CDI} with a profile of your choice". Shown, those words appear in the
// program's highlight colour and the braces disappear.
QString withBraceMarkup(const QString &text);

// The highlight colour of stressed words and profile names in descriptive texts: a blue-grey,
// lighter under a dark palette so that it keeps its contrast there.
QString highlightColour();

// The plain text of a rich text: tags dropped and the common entities turned back into their
// characters, for output that cannot show markup (the command-line tool).
QString withoutMarkup(const QString &richText);
