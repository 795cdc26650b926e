#pragma once

#include <QCoreApplication>
#include <QString>
#include <QUrl>

// The pages of our web site that the Links menu opens in the user's browser. The paths are
// translated, so that a German user lands on the German pages.
class CWebLinks
{
    Q_DECLARE_TR_FUNCTIONS(CWebLinks)

public:
    enum Link
    {
        TechnicalSpecifications,
        ProgrammableCdis,
        Trivia,
        Faq,
        VisitUs,
        ContactUs
    };

    static const char kBase[];
    static const char kDomain[];

    // The address in the language now installed.
    static QUrl address(Link link);
    // "Visit us on" and the domain, with the mnemonic of its Links menu entry.
    static QString visitUsText();
    // Hands the address to the desktop; whether a browser opened is not checked.
    static void open(Link link);
};
