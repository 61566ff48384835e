#include "shell/EstimateDraft.h"

#include <gtest/gtest.h>

namespace fenrow {
namespace {

using Outcome = std::optional<std::optional<qint64>>;

TEST(EstimateDraft, OnlyWholeDecimalNumbersAndBlanksAreCommitted)
{
    EXPECT_EQ(EstimateDraft::committed(QStringLiteral(" 45\n"), std::nullopt), Outcome(45));
    EXPECT_EQ(EstimateDraft::committed(QStringLiteral("+30"), 45), Outcome(30));
    // The store decides what a negative estimate means; the field passes it on.
    EXPECT_EQ(EstimateDraft::committed(QStringLiteral("-5"), 45), Outcome(-5));
    EXPECT_EQ(EstimateDraft::committed(QString(), 45), Outcome(std::optional<qint64>()));

    for (const char *noNumber : {"abc", "1e3", "0x10", "12 min", "4.5", "+", "-", "99999999999999999999"})
        EXPECT_EQ(EstimateDraft::committed(QString::fromLatin1(noNumber), 45), std::nullopt) << noNumber;
    EXPECT_EQ(EstimateDraft::committed(QStringLiteral("45"), 45), std::nullopt) << "the same value";
    EXPECT_EQ(EstimateDraft::committed(QStringLiteral("  "), std::nullopt), std::nullopt) << "nothing to clear";

    EXPECT_EQ(EstimateDraft::text(90), QStringLiteral("90"));
    EXPECT_TRUE(EstimateDraft::text(std::nullopt).isEmpty());
}

} // namespace
} // namespace fenrow
