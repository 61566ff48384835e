#include "BrandPalette.h"

#include <array>

namespace fenrow {

namespace {

// Light and dark, per field in declaration order, per palette in the order
// of `AccentPalette`.
struct RampText {
    std::array<const char *, 12> light;
    std::array<const char *, 12> dark;
};

constexpr std::array<RampText, 6> ramps{{
    // violet
    {{"7C4DE0", "F5F1FD", "F8F5FE", "E4D9F7", "6B3ACF", "D9CBF2", "FCFBFF", "EDE6FA", "EFE9FB", "EBE1F9", "FFFFFF",
      "2E2444"},
     {"A78BFA", "16141C", "1B1922", "332E47", "B9A2FB", "3D3755", "221F2D", "1E1B26", "232031", "272134", "1A1626",
      "14111D"}},
    // blue
    {{"2469D0", "F1F6FD", "F5F8FE", "D9E4F7", "295AA8", "CBD9F2", "FBFCFF", "E6EEFA", "E9F0FB", "E1E8F9", "FFFFFF",
      "243144"},
     {"579FF8", "14181C", "191D22", "2E3B47", "7AB3F9", "374655", "1F262D", "1B2026", "202931", "212834", "161D26",
      "11161D"}},
    // green
    {{"1C7B4F", "F2FCF8", "F5FEFA", "DBF5EA", "1E6846", "CDF0E1", "FBFFFD", "E8F9F2", "EAFAF3", "E2F8F0", "FFFFFF",
      "264235"},
     {"11B462", "141C18", "19221D", "2F4639", "13C96F", "395445", "202D25", "1B2620", "213027", "22332C", "17251E",
      "121C17"}},
    // orange
    {{"A4581E", "FDF6F1", "FEF9F5", "F7E7D9", "864E22", "F2DDCB", "FFFDFB", "FAEFE6", "FBF1E9", "F9EEE1", "FFFFFF",
      "443224"},
     {"F07E0D", "1C1814", "221D19", "47392E", "F59B3F", "554437", "2D251F", "2D251F", "312720", "342C21", "261E16",
      "1D1711"}},
    // pink
    {{"C9286D", "FDF1F6", "FEF5F9", "F6DAE5", "A52C5F", "F1CCDB", "FFFBFD", "FAE7EE", "FBE9F1", "F8E2E9", "FFFFFF",
      "432532"},
     {"F56FA5", "1C1417", "22191D", "462F39", "F790B8", "543845", "2D2025", "2D2025", "312028", "342128", "26161D",
      "1D1116"}},
    // graphite
    {{"696B79", "F6F7F8", "F9F9FA", "E6E7EA", "5A5B66", "DDDDE0", "FDFDFD", "EFF0F2", "F1F1F3", "ECECEE", "FFFFFF",
      "323336"},
     {"999CAD", "181818", "1D1D1E", "393A3C", "ACAFBD", "444548", "252627", "202021", "27282A", "292A2C", "292A2C",
      "161718"}},
}};

QColor hex(const char *text)
{
    return QColor(QLatin1StringView("#") + QLatin1StringView(text));
}

} // namespace

BrandRamp BrandPalette::ramp(AccentPalette palette, bool dark)
{
    const auto &cells = dark ? ramps[std::size_t(palette)].dark : ramps[std::size_t(palette)].light;
    return {hex(cells[0]), hex(cells[1]), hex(cells[2]),  hex(cells[3]),  hex(cells[4]),  hex(cells[5]),
            hex(cells[6]), hex(cells[7]), hex(cells[8]), hex(cells[9]), hex(cells[10]), hex(cells[11])};
}

CanvasColors CanvasColors::make(AccentPalette palette, bool dark)
{
    CanvasColors colors;
    colors.ramp = BrandPalette::ramp(palette, dark);
    colors.dark = dark;
    if (dark) {
        colors.text = QColor(0xec, 0xec, 0xf1);
        colors.secondaryText = QColor(0xa0, 0xa2, 0xae);
        colors.edge = QColor(0x8a, 0x8d, 0x9c);
        colors.cardBorder = colors.ramp.brandBorder.lighter(118);
        colors.shadow = QColor(0, 0, 0, 110);
        colors.warning = QColor(0xf2, 0x8b, 0x57);
        colors.done = QColor(0x4c, 0xc3, 0x8a);
    } else {
        colors.text = QColor(0x1f, 0x21, 0x2b);
        colors.secondaryText = QColor(0x65, 0x68, 0x76);
        colors.edge = QColor(0x9a, 0x9d, 0xab);
        colors.cardBorder = colors.ramp.brandBorder;
        colors.shadow = QColor(0x1a, 0x14, 0x33, 22);
        colors.warning = QColor(0xc4, 0x4d, 0x12);
        colors.done = QColor(0x2f, 0x9e, 0x6b);
    }
    return colors;
}

QColor CanvasColors::tag(NodeColor color) const
{
    // Tags keep their hue in both appearances; the dark ones are lifted so
    // they read on a dark surface.
    QColor light;
    switch (color) {
    case NodeColor::none:
        return cardBorder;
    case NodeColor::red:
        light = QColor(0xe5, 0x48, 0x4d);
        break;
    case NodeColor::orange:
        light = QColor(0xf0, 0x8c, 0x2e);
        break;
    case NodeColor::yellow:
        light = QColor(0xe9, 0xc2, 0x2f);
        break;
    case NodeColor::green:
        light = QColor(0x3d, 0xa8, 0x6a);
        break;
    case NodeColor::blue:
        light = QColor(0x3f, 0x7f, 0xe0);
        break;
    case NodeColor::purple:
        light = QColor(0x8e, 0x5b, 0xd8);
        break;
    case NodeColor::pink:
        light = QColor(0xe0, 0x5a, 0x9a);
        break;
    case NodeColor::grey:
        light = QColor(0x8a, 0x90, 0x99);
        break;
    }
    return dark ? light.lighter(120) : light;
}

} // namespace fenrow
