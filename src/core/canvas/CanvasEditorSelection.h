#pragma once

// Private to the editor's source files.
#include "CanvasEditor.h"
#include "CanvasSelection.h"

namespace fenrow {

inline CanvasSelection currentSelection(const CanvasInteraction &interaction)
{
    return {interaction.selectedItemIDs(), interaction.selectedEdgeID()};
}

// Hands the selection to the history when the outermost editor call that
// opened it returns, if the call changed it: a click that clears the edge
// and then selects a card is one step, not two.
class CanvasEditor::SelectionStep {
public:
    explicit SelectionStep(CanvasEditor &editor);
    ~SelectionStep();
    SelectionStep(const SelectionStep &) = delete;
    SelectionStep &operator=(const SelectionStep &) = delete;

private:
    CanvasEditor &m_editor;
    CanvasSelection m_before;
};

} // namespace fenrow
