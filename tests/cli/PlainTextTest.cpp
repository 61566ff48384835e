#include "cli/PlainText.h"
#include "cli/TextTable.h"

#include "QtPrinters.h"

#include <gtest/gtest.h>

namespace fenrow {
namespace {

TEST(PlainTextTest, MeasuresTerminalColumns)
{
    EXPECT_EQ(PlainText::displayWidth(QStringLiteral("Garden")), 6);
    EXPECT_EQ(PlainText::displayWidth(QStringLiteral("洗濯")), 4);
    EXPECT_EQ(PlainText::displayWidth(QStringLiteral("🌱 Garden")), 9);
    // "é" as e plus a combining accent is one column.
    EXPECT_EQ(PlainText::displayWidth(QStringLiteral("Cafe\u0301")), 4);
    EXPECT_EQ(PlainText::displayWidth(QStringLiteral("Vergi · Ödeme")), 13);
}

TEST(PlainTextTest, NamesStayOnOneLine)
{
    EXPECT_EQ(PlainText::singleLine(QStringLiteral("Plan\nthe\tday\u2028now")), QStringLiteral("Plan the day now"));
    EXPECT_EQ(PlainText::quoted(QStringLiteral("A\r\nB")), QStringLiteral("\"A  B\""));
}

TEST(TextTableTest, AlignsColumnsByDisplayWidth)
{
    TextTable table({TextTable::Alignment::right}, QStringLiteral("  "));
    table.addRow({QStringLiteral("9"), QStringLiteral("洗濯"), QStringLiteral("No tasks yet")});
    table.addRow({QStringLiteral("10"), QStringLiteral("Garden"), QStringLiteral("All 2 done")});
    table.addRow({QStringLiteral("11"), QStringLiteral("Tax\nreturn"), QString()});
    QString printed;
    QTextStream out(&printed);
    table.print(out);
    out.flush();
    EXPECT_EQ(printed, QStringLiteral("   9  洗濯        No tasks yet\n"
                                      "  10  Garden      All 2 done\n"
                                      "  11  Tax return\n"));
}

} // namespace
} // namespace fenrow
