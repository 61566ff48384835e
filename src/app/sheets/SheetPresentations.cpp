#include "SheetPresentations.h"

namespace fenrow {

void SheetPresentation::setPresented(bool presented)
{
    if (m_isPresented == presented)
        return;
    m_isPresented = presented;
    emit presentedChanged(presented);
}

void GenerateSubtasksPresentation::present(const QUuid &itemID)
{
    // A request for another task while one sheet is up is refused: the
    // open sheet keeps the task it was asked about.
    if (isPresented())
        return;
    m_itemID = itemID;
    setPresented(true);
}

} // namespace fenrow
