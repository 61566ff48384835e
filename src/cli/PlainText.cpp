#include "PlainText.h"

#include <QList>

#include <algorithm>

namespace fenrow::PlainText {

namespace {

bool isWide(char32_t c)
{
    return (c >= 0x1100 && c <= 0x115F) || (c >= 0x2E80 && c <= 0x303E) || (c >= 0x3041 && c <= 0x33FF)
        || (c >= 0x3400 && c <= 0x4DBF) || (c >= 0x4E00 && c <= 0x9FFF) || (c >= 0xA000 && c <= 0xA4CF)
        || (c >= 0xAC00 && c <= 0xD7A3) || (c >= 0xF900 && c <= 0xFAFF) || (c >= 0xFE30 && c <= 0xFE4F)
        || (c >= 0xFF00 && c <= 0xFF60) || (c >= 0xFFE0 && c <= 0xFFE6) || (c >= 0x1F300 && c <= 0x1F64F)
        || (c >= 0x1F900 && c <= 0x1F9FF) || (c >= 0x20000 && c <= 0x3FFFD);
}

} // namespace

qsizetype displayWidth(QStringView text)
{
    // Every ASCII character takes one column; most cells are ASCII.
    if (QtPrivate::isAscii(text))
        return text.size();
    qsizetype width = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        char32_t c = text[i].unicode();
        if (QChar::isHighSurrogate(c) && i + 1 < text.size() && text[i + 1].isLowSurrogate())
            c = QChar::surrogateToUcs4(char16_t(c), text[++i].unicode());
        switch (QChar::category(c)) {
        case QChar::Mark_NonSpacing:
        case QChar::Mark_Enclosing:
        case QChar::Other_Format:
            break;
        default:
            width += isWide(c) ? 2 : 1;
        }
    }
    return width;
}

bool breaksLine(QChar c)
{
    return c.unicode() < 0x20 || (c.unicode() >= 0x7F && c.unicode() <= 0x9F) || c == QChar::LineSeparator
        || c == QChar::ParagraphSeparator;
}

QString singleLine(const QString &text)
{
    const bool breaksNothing = std::none_of(text.cbegin(), text.cend(), breaksLine);
    // The usual case shares the text instead of copying it.
    if (breaksNothing)
        return text;
    QString line;
    line.reserve(text.size());
    for (const QChar c : text) {
        const bool breaksLayout = c.category() == QChar::Other_Control || c == QChar::LineSeparator
            || c == QChar::ParagraphSeparator;
        line.append(breaksLayout ? QLatin1Char(' ') : c);
    }
    return line;
}

QString quoted(const QString &name)
{
    return QLatin1Char('"') + singleLine(name) + QLatin1Char('"');
}

QString id(const QUuid &id)
{
    return id.toString(QUuid::WithoutBraces).toUpper();
}

QString counted(qint64 count, const QString &singular, const QString &plural)
{
    return QStringLiteral("%1 %2").arg(count).arg(count == 1 ? singular : plural);
}

} // namespace fenrow::PlainText
