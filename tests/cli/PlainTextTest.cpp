#include "cli/PlainText.h"
#include "cli/TextTable.h"

#include "QtPrinters.h"

#include <QBuffer>

#include <gtest/gtest.h>

namespace fenrow {
namespace {

TEST(TextTableTest, AlignsColumnsByTerminalWidthOnOneLinePerRow)
{
    EXPECT_EQ(PlainText::displayWidth(u"🌱 Garden"), 9);
    // "é" as e plus a combining accent is one column.
    EXPECT_EQ(PlainText::displayWidth(u"Cafe\u0301"), 4);

    TextTable table({TextTable::Alignment::right}, "  ");
    table.addRow({"9", "洗濯", "No tasks yet"});
    table.addRow({"10", "Garden", "All 2 done"});
    table.addRow({"11", "Tax\nreturn\u2028now", ""});
    QString printed;
    QTextStream out(&printed);
    table.print(out);
    out.flush();
    const QString expected = QStringLiteral("   9  洗濯            No tasks yet\n"
                                            "  10  Garden          All 2 done\n"
                                            "  11  Tax return now\n");
    EXPECT_EQ(printed, expected);

    // A stream over a device gets the table's bytes as they are, in their
    // place between what the stream held before and what follows.
    QBuffer device;
    device.open(QIODevice::WriteOnly);
    QTextStream deviceOut(&device);
    deviceOut << "Before\n";
    table.print(deviceOut);
    deviceOut << "After\n";
    deviceOut.flush();
    EXPECT_EQ(QString::fromUtf8(device.data()), "Before\n" + expected + "After\n");
}

} // namespace
} // namespace fenrow
