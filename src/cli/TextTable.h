#pragma once

#include <QByteArray>
#include <QList>
#include <QStringList>
#include <QStringView>
#include <QTextStream>

#include <initializer_list>

namespace fenrow {

// Rows of text printed in aligned columns, two spaces apart. Cells are made
// single-line; the last column is not padded, so no line ends in blanks.
class TextTable {
public:
    enum class Alignment { left, right };

    // A cell that many rows share (a flow's name, a due day), made ready to
    // print once: its UTF-8 and its width.
    class Cell
    {
    public:
        Cell() = default;
        explicit Cell(QStringView text);

    private:
        friend class TextTable;
        QByteArray m_utf8;
        qsizetype m_width = 0;
    };

    explicit TextTable(QList<Alignment> alignments = {}, QString indent = {});

    void addRow(const QStringList &cells);
    // The same without a list made for the row: long listings add thousands.
    void addRow(std::initializer_list<QStringView> cells);
    // A row cell by cell, for rows that mix their own texts with shared ones.
    void beginRow();
    void addCell(QStringView text);
    void addCell(const Cell &cell);
    // A line of its own between rows, without the indent; it takes no part
    // in the column widths, so columns line up across headings.
    void addHeading(const QString &text);
    bool isEmpty() const { return m_rowStarts.isEmpty(); }
    // Room for `rows` more rows of `columns` cells, for a long listing.
    void reserve(qsizetype rows, qsizetype columns);
    void print(QTextStream &out) const;

private:
    // Appends `text` to `bytes` as it is printed; gives its width.
    static qsizetype encode(QStringView text, QByteArray &bytes);

    QList<Alignment> m_alignments;
    QByteArray m_indent;
    // All cells, row after row, as the UTF-8 they are printed in, each with
    // its end in m_bytes and its width on a terminal, both found once as the
    // row comes in; a row is the cells from its start to the next row's. A
    // heading is a row of one cell marked in m_isHeading.
    QByteArray m_bytes;
    QList<qsizetype> m_cellEnds;
    QList<qsizetype> m_cellWidths;
    QList<qsizetype> m_rowStarts;
    QList<bool> m_isHeading;
};

} // namespace fenrow
