#include "TextFolding.h"

#include "shell/InterfaceLanguage.h"

namespace fenrow::TextFolding {

namespace {

bool isDiacritic(char32_t codePoint)
{
    // Spacing marks (Mc) stay: in Indic scripts they are vowel signs that
    // make a different word, not accents.
    const QChar::Category category = QChar::category(codePoint);
    return category == QChar::Mark_NonSpacing || category == QChar::Mark_Enclosing;
}

} // namespace

QLocale interfaceLocale()
{
    return QLocale(InterfaceLanguage::current());
}

QString fold(const QString &text, const QLocale &locale)
{
    QString lowered = locale.toLower(text);
    // "ß" has no one-letter capital; full case folding makes it "ss", so
    // that "STRASSE" finds "Straße".
    lowered.replace(QChar(0x00DF), QLatin1StringView("ss"));
    const QString decomposed = lowered.normalized(QString::NormalizationForm_KD);

    QString folded;
    folded.reserve(decomposed.size());
    const qsizetype size = decomposed.size();
    for (qsizetype i = 0; i < size; ++i) {
        const QChar unit = decomposed.at(i);
        if (unit.isHighSurrogate() && i + 1 < size && decomposed.at(i + 1).isLowSurrogate()) {
            const QChar low = decomposed.at(i + 1);
            ++i;
            if (!isDiacritic(QChar::surrogateToUcs4(unit, low))) {
                folded.append(unit);
                folded.append(low);
            }
            continue;
        }
        if (!isDiacritic(unit.unicode()))
            folded.append(unit);
    }
    return folded;
}

bool contains(const QString &text, const QString &foldedQuery, const QLocale &locale)
{
    if (foldedQuery.isEmpty())
        return false;
    return fold(text, locale).contains(foldedQuery);
}

} // namespace fenrow::TextFolding
