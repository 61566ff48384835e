#include "cli/PlainText.h"
#include "cli/TextTable.h"

#include "QtPrinters.h"

#include <gtest/gtest.h>

namespace fenrow {
namespace {

TEST(TextTableTest, AlignsColumnsByTerminalWidthOnOneLinePerRow)
{
    EXPECT_EQ(PlainText::displayWidth("🌱 Garden"), 9);
    // "é" as e plus a combining accent is one column.
    EXPECT_EQ(PlainText::displayWidth("Cafe\u0301"), 4);

    TextTable table({TextTable::Alignment::right}, "  ");
    table.addRow({"9", "洗濯", "No tasks yet"});
    table.addRow({"10", "Garden", "All 2 done"});
    table.addRow({"11", "Tax\nreturn\u2028now", ""});
    QString printed;
    QTextStream out(&printed);
    table.print(out);
    out.flush();
    EXPECT_EQ(printed, QStringLiteral("   9  洗濯            No tasks yet\n"
                                      "  10  Garden          All 2 done\n"
                                      "  11  Tax return now\n"));
}

} // namespace
} // namespace fenrow
