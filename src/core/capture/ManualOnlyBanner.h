#pragma once

#include "EngineAvailability.h"

#include <QString>
#include <QUrl>

#include <functional>

namespace fenrow {

// The notice that the language model is off and that everything can still be
// done by hand: a slim bar in sheets and the main window, a card in the
// settings window. The view around it keeps its own "dismissed" flag, which
// lasts until that view is built anew.
struct ManualOnlyBanner {
    enum class Style { bar, card };

    static constexpr const char *identifier = "banner.engineUnavailable";

    EngineAvailability availability{};
    Style style = Style::bar;
    bool showsDismiss = false;
    std::function<void()> onDismiss{};
    // A system page where the model is switched on. Fenrow's own choice of
    // model is offered by the main window's banner (Settings ▸ Language
    // model), so none is set here.
    QUrl settingsLink{};

    bool isShown(bool dismissed) const { return !availability.isAvailable() && !dismissed; }
    QString message() const { return availability.readout(); }
    bool showsSettingsButton() const { return settingsLink.isValid() && !settingsLink.isEmpty(); }
    static QString dismissLabel() { return qtTrId("banner.engineUnavailable.dismiss"); }
};

} // namespace fenrow
