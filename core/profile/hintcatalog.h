#pragma once

#include "profile/fileerror.h"

#include <QByteArray>
#include <QString>
#include <QVector>

#include <array>

class QIODevice;

// One hint in one language: a title and a (rich) text.
struct HintText
{
    QString title;
    QString text;

    bool operator==(const HintText &other) const { return title == other.title && text == other.text; }
};

// The help texts of the editor's hint buttons ("hints.cdh"), addressed by number:
// 0 voltage, 1 side stand, 2 pick-up edge, 3 sensor advance, 4 ignition map.
class HintCatalog
{
public:
    static constexpr int kLanguageCount = 2;
    using Hint = std::array<HintText, kLanguageCount>;

    qint32 catalogValue() const { return m_catalogValue; }
    void setCatalogValue(qint32 value) { m_catalogValue = value; }

    int count() const { return m_hints.size(); }
    void append(const Hint &hint) { m_hints.append(hint); }
    // Empty texts for an unknown hint or language.
    HintText hint(int index, int language) const;

private:
    qint32 m_catalogValue = 0;
    QVector<Hint> m_hints;
};

constexpr qint32 kHintFormat = 1;

// Damaged when the container or any value of the catalog record is broken.
tl::expected<HintCatalog, FileError> loadHintCatalog(QIODevice &in);
QByteArray hintCatalogBytes(const HintCatalog &catalog);
