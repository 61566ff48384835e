#include "TextTable.h"

#include "Console.h"
#include "PlainText.h"

#include <QStringEncoder>

#include <algorithm>

namespace fenrow {

TextTable::TextTable(QList<Alignment> alignments, QString indent)
    : m_alignments(std::move(alignments)), m_indent(indent.toUtf8())
{
}

void TextTable::reserve(qsizetype rows, qsizetype columns)
{
    m_rowStarts.reserve(m_rowStarts.size() + rows);
    m_isHeading.reserve(m_isHeading.size() + rows);
    m_cellEnds.reserve(m_cellEnds.size() + rows * columns);
    m_cellWidths.reserve(m_cellWidths.size() + rows * columns);
}

qsizetype TextTable::encode(QStringView text, QByteArray &bytes)
{
    // Encoded straight into place, without a copy of its own. Most cells
    // are plain ASCII on one line, a byte and a column a character, which
    // the encoding tells: other characters take more bytes.
    const qsizetype at = bytes.size();
    if (bytes.capacity() < at + 3 * text.size())
        bytes.reserve(std::max(2 * bytes.capacity(), at + 3 * text.size()));
    bytes.resize(at + 3 * text.size());
    QStringEncoder encoder(QStringEncoder::Utf8);
    const char *end = encoder.appendToBuffer(bytes.data() + at, text);
    bytes.truncate(end - bytes.constData());
    const char *encoded = bytes.constData() + at;
    const bool ascii = end - encoded == text.size();
    if (ascii && std::none_of(encoded, end, [](char c) { return uchar(c) < 0x20 || c == 0x7F; }))
        return text.size();
    if (!ascii && std::none_of(text.begin(), text.end(), PlainText::breaksLine))
        return PlainText::displayWidth(text);
    bytes.truncate(at);
    const QString line = PlainText::singleLine(text.toString());
    bytes.append(line.toUtf8());
    return PlainText::displayWidth(line);
}

TextTable::Cell::Cell(QStringView text) : m_width(encode(text, m_utf8)) {}

void TextTable::beginRow()
{
    m_rowStarts.append(m_cellEnds.size());
    m_isHeading.append(false);
}

void TextTable::addCell(QStringView text)
{
    m_cellWidths.append(encode(text, m_bytes));
    m_cellEnds.append(m_bytes.size());
}

void TextTable::addCell(const Cell &cell)
{
    m_bytes.append(cell.m_utf8);
    m_cellWidths.append(cell.m_width);
    m_cellEnds.append(m_bytes.size());
}

void TextTable::addRow(const QStringList &cells)
{
    beginRow();
    for (const QString &cell : cells)
        addCell(cell);
}

void TextTable::addRow(std::initializer_list<QStringView> cells)
{
    beginRow();
    for (const QStringView cell : cells)
        addCell(cell);
}

void TextTable::addHeading(const QString &text)
{
    beginRow();
    m_isHeading.last() = true;
    addCell(text);
    m_cellWidths.last() = 0;
}

void TextTable::print(QTextStream &out) const
{
    const qsizetype rowCount = m_rowStarts.size();
    const qsizetype cellCount = m_cellEnds.size();
    auto rowEnd = [&](qsizetype row) { return row + 1 < rowCount ? m_rowStarts[row + 1] : cellCount; };
    auto cellStart = [&](qsizetype cell) { return cell > 0 ? m_cellEnds[cell - 1] : qsizetype(0); };

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

    // The whole table in one piece, its room known beforehand, written at
    // once: a long listing is mostly copying.
    qsizetype size = m_bytes.size();
    for (qsizetype row = 0; row < rowCount; ++row) {
        size += 1;
        if (m_isHeading[row])
            continue;
        size += m_indent.size();
        for (qsizetype cell = m_rowStarts[row], column = 0; cell < rowEnd(row); ++cell, ++column)
            size += 2 + widths[column] - m_cellWidths[cell];
    }
    QByteArray text(size, Qt::Uninitialized);
    char *to = text.data();
    const char *bytes = m_bytes.constData();
    for (qsizetype row = 0; row < rowCount; ++row) {
        const qsizetype first = m_rowStarts[row];
        if (m_isHeading[row]) {
            to = std::copy(bytes + cellStart(first), bytes + m_cellEnds[first], to);
            *to++ = '\n';
            continue;
        }
        char *const lineStart = to;
        to = std::copy(m_indent.cbegin(), m_indent.cend(), to);
        const qsizetype end = rowEnd(row);
        for (qsizetype cell = first, column = 0; cell < end; ++cell, ++column) {
            const qsizetype missing = widths[column] - m_cellWidths[cell];
            const bool last = cell == end - 1;
            if (column > 0)
                to = std::fill_n(to, 2, ' ');
            const bool right = m_alignments.value(column) == Alignment::right;
            if (right)
                to = std::fill_n(to, missing, ' ');
            to = std::copy(bytes + cellStart(cell), bytes + m_cellEnds[cell], to);
            if (!right && !last)
                to = std::fill_n(to, missing, ' ');
        }
        // An empty last cell would otherwise leave the padding behind.
        while (to > lineStart && to[-1] == ' ')
            --to;
        *to++ = '\n';
    }
    text.truncate(to - text.constData());
    Console::writeUtf8(out, text);
}

} // namespace fenrow
