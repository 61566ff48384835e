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
    bool isEmpty() const { return m_rows.isEmpty(); }
    void print(QTextStream &out) const;

private:
    QList<Alignment> m_alignments;
    QString m_indent;
    QList<QStringList> m_rows;
    // Each cell's width on a terminal, measured once as the row comes in.
    QList<QList<qsizetype>> m_cellWidths;
    // Headings are the rows marked here.
    QList<bool> m_isHeading;
};

} // namespace fenrow
