#pragma once

#include <QList>
#include <QStringList>
#include <QTextStream>

namespace fenrow {

// Rows of text printed in aligned columns, two spaces apart. Cells are made
// single-line; the last column is not padded, so no line ends in blanks.
class TextTable {
public:
    enum class Alignment { left, right };

    explicit TextTable(QList<Alignment> alignments = {}, QString indent = {});

    void addRow(const QStringList &cells);
    // A line of its own between rows, without the indent; it takes no part
    // in the column widths, so columns line up across headings.
    void addHeading(const QString &text);
    bool isEmpty() const { return m_rowStarts.isEmpty(); }
    void print(QTextStream &out) const;

private:
    QList<Alignment> m_alignments;
    QString m_indent;
    // All cells, row after row, each with its width on a terminal, measured
    // once as the row comes in; a row is the cells from its start to the
    // next row's. A heading is a row of one cell marked in m_isHeading.
    QList<QString> m_cells;
    QList<qsizetype> m_cellWidths;
    QList<qsizetype> m_rowStarts;
    QList<bool> m_isHeading;
};

} // namespace fenrow
