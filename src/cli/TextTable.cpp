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
    QList<qsizetype> widths;
    row.reserve(cells.size());
    widths.reserve(cells.size());
    for (const QString &cell : cells) {
        row.append(PlainText::singleLine(cell));
        widths.append(PlainText::displayWidth(row.last()));
    }
    m_rows.append(row);
    m_cellWidths.append(widths);
    m_isHeading.append(false);
}

void TextTable::addHeading(const QString &text)
{
    m_rows.append({PlainText::singleLine(text)});
    m_cellWidths.append(QList<qsizetype>());
    m_isHeading.append(true);
}

void TextTable::print(QTextStream &out) const
{
    QList<qsizetype> widths;
    for (qsizetype i = 0; i < m_rows.size(); ++i) {
        const QList<qsizetype> &cellWidths = m_cellWidths[i];
        for (qsizetype column = 0; column < cellWidths.size(); ++column) {
            if (column >= widths.size())
                widths.append(0);
            widths[column] = std::max(widths[column], cellWidths[column]);
        }
    }

    QString line;
    for (qsizetype i = 0; i < m_rows.size(); ++i) {
        const QStringList &row = m_rows[i];
        if (m_isHeading[i]) {
            out << row.first() << '\n';
            continue;
        }
        const QList<qsizetype> &cellWidths = m_cellWidths[i];
        // Kept from row to row: its buffer is grown once, not per line.
        line.resize(0);
        line += m_indent;
        for (qsizetype column = 0; column < row.size(); ++column) {
            const qsizetype missing = widths[column] - cellWidths[column];
            const bool last = column == row.size() - 1;
            if (column > 0)
                line += QLatin1String("  ");
            const bool right = m_alignments.value(column) == Alignment::right;
            if (right)
                line.resize(line.size() + missing, QLatin1Char(' '));
            line += row[column];
            if (!right && !last)
                line.resize(line.size() + missing, QLatin1Char(' '));
        }
        // An empty last cell would otherwise leave the padding behind.
        while (line.endsWith(QLatin1Char(' ')))
            line.chop(1);
        out << line << '\n';
    }
}

} // namespace fenrow
