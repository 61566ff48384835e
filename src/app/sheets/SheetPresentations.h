#pragma once

#include <QObject>
#include <QUuid>

#include <optional>

namespace fenrow {

// A request to raise one of the window's sheets. The window holds one of
// each and shows the sheet while `isPresented` is set, so a menu, a list
// or a canvas can ask for a sheet without holding a view; when the sheet
// closes, the flag goes back to false. UI thread only.
class SheetPresentation : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    bool isPresented() const { return m_isPresented; }
    void setPresented(bool presented);

signals:
    void presentedChanged(bool presented);

private:
    bool m_isPresented = false;
};

// The sheet that makes a new flow, from a text or blank.
class NewFlowFromTextPresentation : public SheetPresentation {
    Q_OBJECT

public:
    using SheetPresentation::SheetPresentation;
};

// The sheet that fits today's ready tasks into a time budget.
class PlanDayPresentation : public SheetPresentation {
    Q_OBJECT

public:
    using SheetPresentation::SheetPresentation;
};

// The sheet that breaks one task into subtasks; `itemID` names the task.
class GenerateSubtasksPresentation : public SheetPresentation {
    Q_OBJECT

public:
    using SheetPresentation::SheetPresentation;

    std::optional<QUuid> itemID() const { return m_itemID; }
    void setItemID(std::optional<QUuid> itemID) { m_itemID = itemID; }
    // Names the task first, so whoever hears `presentedChanged` finds it.
    void present(const QUuid &itemID);

private:
    std::optional<QUuid> m_itemID;
};

} // namespace fenrow
