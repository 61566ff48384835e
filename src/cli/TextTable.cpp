#include "TextTable.h"

#include "PlainText.h"

namespace fenrow {

TextTable::TextTable(QList<Alignment> alignments, QString indent)
    : m_alignments(std::move(alignments)), m_indent(std::move(indent))
{
}

void TextTable::addRow(const QStringList &cells)
{
    QStringList row;
    for (const QString &cell : cells)
        row.append(PlainText::singleLine(cell));
    m_rows.append(row);
    m_isHeading.append(false);
}

void TextTable::addHeading(const QString &text)
{
    m_rows.append({PlainText::singleLine(text)});
    m_isHeading.append(true);
}

void TextTable::print(QTextStream &out) const
{
    QList<qsizetype> widths;
    for (qsizetype i = 0; i < m_rows.size(); ++i) {
        if (m_isHeading[i])
            continue;
        const QStringList &row = m_rows[i];
        for (qsizetype column = 0; column < row.size(); ++column) {
            if (column >= widths.size())
                widths.append(0);
            widths[column] = std::max(widths[column], PlainText::displayWidth(row[column]));
        }
    }

    for (qsizetype i = 0; i < m_rows.size(); ++i) {
        const QStringList &row = m_rows[i];
        if (m_isHeading[i]) {
            out << row.first() << '\n';
            continue;
        }
        QString line = m_indent;
        for (qsizetype column = 0; column < row.size(); ++column) {
            const QString &cell = row[column];
            const bool last = column == row.size() - 1;
            if (column > 0)
                line += QLatin1String("  ");
            if (m_alignments.value(column) == Alignment::right)
                line += QString(widths[column] - PlainText::displayWidth(cell), QLatin1Char(' ')) + cell;
            else
                line += last ? cell : PlainText::padded(cell, widths[column]);
        }
        // An empty last cell would otherwise leave the padding behind.
        while (line.endsWith(QLatin1Char(' ')))
            line.chop(1);
        out << line << '\n';
    }
}

} // namespace fenrow
