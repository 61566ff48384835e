#pragma once

#include "domain/NodeColor.h"
#include "shell/PreferenceChoices.h"

#include <QColor>

namespace fenrow {

// The twelve colours of one accent palette in one appearance. Everything
// the canvas draws takes its colours from here, so a change of palette or
// of light and dark recolours it without a stored colour changing.
struct BrandRamp {
    QColor brand;
    QColor brandSubtle;
    QColor brandPanel;
    QColor brandBorder;
    QColor brandHover;
    QColor canvasGrid;
    QColor nodeSurface;
    QColor nodeSurfaceDone;
    QColor fieldSurface;
    QColor noticeSurface;
    QColor onAccent;
    QColor portFolded;

    friend bool operator==(const BrandRamp &, const BrandRamp &) = default;
};

namespace BrandPalette {

BrandRamp ramp(AccentPalette palette, bool dark);

} // namespace BrandPalette

// The colours of the canvas as drawn: the ramp, and the neutral inks and
// the tag colours that go with the appearance.
struct CanvasColors {
    BrandRamp ramp;
    bool dark = false;
    QColor text;
    QColor secondaryText;
    QColor edge;
    QColor cardBorder;
    QColor shadow;
    QColor warning;
    QColor done;

    QColor tag(NodeColor color) const;

    static CanvasColors make(AccentPalette palette, bool dark);
    friend bool operator==(const CanvasColors &, const CanvasColors &) = default;
};

} // namespace fenrow
