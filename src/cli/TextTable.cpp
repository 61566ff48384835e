#include "TextTable.h"

#include "PlainText.h"

namespace fenrow {

TextTable::TextTable(QList<Alignment> alignments, QString indent)
    : m_alignments(std::move(alignments)), m_indent(std::move(indent))
{
}

void TextTable::addRow(const QStringList &cells)
{
    m_rowStarts.append(m_cells.size());
    m_isHeading.append(false);
    for (const QString &cell : cells) {
        m_cells.append(PlainText::singleLine(cell));
        m_cellWidths.append(PlainText::displayWidth(m_cells.last()));
    }
}

void TextTable::addHeading(const QString &text)
{
    m_rowStarts.append(m_cells.size());
    m_isHeading.append(true);
    m_cells.append(PlainText::singleLine(text));
    m_cellWidths.append(0);
}

void TextTable::print(QTextStream &out) const
{
    const qsizetype rowCount = m_rowStarts.size();
    auto rowEnd = [&](qsizetype row) { return row + 1 < rowCount ? m_rowStarts[row + 1] : m_cells.size(); };

    QList<qsizetype> widths;
    for (qsizetype row = 0; row < rowCount; ++row) {
        if (m_isHeading[row])
            continue;
        for (qsizetype cell = m_rowStarts[row], column = 0; cell < rowEnd(row); ++cell, ++column) {
            if (column >= widths.size())
                widths.append(0);
            widths[column] = std::max(widths[column], m_cellWidths[cell]);
        }
    }

    QString line;
    for (qsizetype row = 0; row < rowCount; ++row) {
        if (m_isHeading[row]) {
            out << m_cells[m_rowStarts[row]] << '\n';
            continue;
        }
        // Kept from row to row: its buffer is grown once, not per line.
        line.resize(0);
        line += m_indent;
        const qsizetype end = rowEnd(row);
        for (qsizetype cell = m_rowStarts[row], column = 0; cell < end; ++cell, ++column) {
            const qsizetype missing = widths[column] - m_cellWidths[cell];
            const bool last = cell == end - 1;
            if (column > 0)
                line += QLatin1String("  ");
            const bool right = m_alignments.value(column) == Alignment::right;
            if (right)
                line.resize(line.size() + missing, QLatin1Char(' '));
            line += m_cells[cell];
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
