#include "KeySymbols.h"
#include "shell/ShortcutKeys.h"

#include <QRegularExpression>

#include <gtest/gtest.h>

namespace fenrow {
namespace {

TEST(KeySymbols, EveryKeyAStoredCombinationCanHoldHasASymbolAndAName)
{
    int mapped = 0;
    for (int code = 0; code <= 0xFFFF; ++code) {
        const std::optional<Qt::Key> key = ShortcutKeys::qtKey(quint16(code));
        if (!key)
            continue;
        ++mapped;
        const std::optional<KeySymbols::Symbol> symbol = KeySymbols::symbol(*key);
        ASSERT_TRUE(symbol.has_value()) << "key code " << code;
        EXPECT_NE(symbol->keysym, 0u);
        // The portal's shortcut names allow letters, digits and underscores.
        EXPECT_TRUE(QRegularExpression(QStringLiteral("^[A-Za-z0-9_]+$")).match(symbol->name).hasMatch())
            << symbol->name.toStdString();
    }
    EXPECT_EQ(mapped, 57);

    EXPECT_EQ(KeySymbols::symbol(Qt::Key_A)->keysym, 0x61u) << "the lower-case letter";
    EXPECT_EQ(KeySymbols::symbol(Qt::Key_A)->name, "a");
    EXPECT_EQ(KeySymbols::symbol(Qt::Key_7)->keysym, 0x37u);
    EXPECT_EQ(KeySymbols::symbol(Qt::Key_Space)->name, "space");
    EXPECT_EQ(KeySymbols::symbol(Qt::Key_QuoteLeft)->name, "grave");
    EXPECT_EQ(KeySymbols::symbol(Qt::Key_Return)->keysym, 0xff0du);
    EXPECT_EQ(KeySymbols::symbol(Qt::Key_F5), std::nullopt);
}

TEST(KeySymbols, TriggersAreWrittenAsThePortalReadsThem)
{
    using namespace KeyModifier;
    // The command modifier is Ctrl, as inside the program.
    EXPECT_EQ(KeySymbols::trigger(ShortcutKeys::captureShortcut(defaultGlobalShortcut)), "CTRL+SHIFT+space");
    EXPECT_EQ(KeySymbols::trigger(ShortcutKeys::captureShortcut({0, control | option})), "ALT+LOGO+a");
    EXPECT_EQ(KeySymbols::trigger(ShortcutKeys::captureShortcut({36, command | option | shift | control})),
              "CTRL+ALT+SHIFT+LOGO+Return");
    EXPECT_EQ(KeySymbols::trigger(QKeyCombination(Qt::ControlModifier, Qt::Key_F5)), std::nullopt);
}

} // namespace
} // namespace fenrow
