#include "profile/hintcatalog.h"

#include "profile/container.h"
#include "profile/taggedvalues.h"

HintText HintCatalog::hint(int index, int language) const
{
    if (index < 0 || index >= m_hints.size() || language < 0 || language >= kLanguageCount)
        return {};
    return m_hints.at(index).at(size_t(language));
}

tl::expected<HintCatalog, FileError> loadHintCatalog(QIODevice &in)
{
    tl::expected<RecordCursor, FileError> records = readContainer(in);
    if (!records)
        return tl::make_unexpected(records.error());

    const QByteArray record = records->next();
    TagReader reader(record);
    qint32 catalogValue = 0;
    qint32 format = 0;
    qint32 hintCount = 0;
    qint32 languageCount = 0;
    if (!reader.readInt(catalogValue) || !reader.readInt(format) || !reader.readInt(hintCount)
        || !reader.readInt(languageCount))
        return damagedFile();

    HintCatalog catalog;
    catalog.setCatalogValue(catalogValue);
    // A catalog without languages holds nothing to show; its hint count is not worth trusting.
    if (languageCount < 1)
        return catalog;
    for (qint32 h = 0; h < hintCount; ++h) {
        HintCatalog::Hint hint;
        for (qint32 language = 0; language < languageCount; ++language) {
            HintText text;
            if (!reader.readString(text.title) || !reader.readString(text.text))
                return damagedFile();
            if (language < HintCatalog::kLanguageCount)
                hint.at(size_t(language)) = text;
        }
        catalog.append(hint);
    }
    return catalog;
}

QByteArray hintCatalogBytes(const HintCatalog &catalog)
{
    QByteArray record;
    TagWriter writer(record);
    writer.writeInt(catalog.catalogValue());
    writer.writeInt(kHintFormat);
    writer.writeInt(catalog.count());
    writer.writeInt(HintCatalog::kLanguageCount);
    for (int h = 0; h < catalog.count(); ++h) {
        for (int language = 0; language < HintCatalog::kLanguageCount; ++language) {
            const HintText text = catalog.hint(h, language);
            writer.writeString(text.title);
            writer.writeString(text.text);
        }
    }
    return containerBytes({record});
}
