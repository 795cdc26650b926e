#include "dialogs/cweblinks.h"

#include <QDesktopServices>

const char CWebLinks::kBase[] = "https://sparkwright.example/";
const char CWebLinks::kDomain[] = "sparkwright.example";

QUrl CWebLinks::address(Link link)
{
    QString path;
    switch (link) {
    case TechnicalSpecifications:
        path = tr("en/technical-specifications");
        break;
    case ProgrammableCdis:
        path = tr("en/programmable-cdi");
        break;
    case Trivia:
        path = tr("en/facts-worth-knowing-about-ignition");
        break;
    case Faq:
        path = tr("en/frequently-asked-questions");
        break;
    case VisitUs:
        // The whole address is translated, scheme included: the home page of each language is
        // reached over plain http.
        return QUrl(tr("http://sparkwright.example/en"));
    case ContactUs:
        path = tr("en/contact");
        break;
    }
    return QUrl(QLatin1String(kBase) + path);
}

QString CWebLinks::visitUsText()
{
    return tr("&Visit us on") + QLatin1Char(' ') + QLatin1String(kDomain);
}

void CWebLinks::open(Link link)
{
    QDesktopServices::openUrl(address(link));
}
