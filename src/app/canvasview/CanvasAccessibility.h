#pragma once

namespace fenrow
{

// Makes every canvas answer assistive technology with its cards: one
// accessible child per card drawn, with its title, state and neighbours in
// the graph, and actions to select it, open it and mark it done. Safe to
// call more than once; nothing is built until a tool asks.
void installCanvasAccessibility();

} // namespace fenrow
