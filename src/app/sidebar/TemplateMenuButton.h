#pragma once

#include <QToolButton>
#include <QUuid>

class QMenu;

namespace fenrow {

class FenrowStore;

// The button beside + that makes a new flow from a saved template. It shows
// only while there are templates, and lists them by name, oldest first.
class TemplateMenuButton : public QToolButton {
    Q_OBJECT

public:
    explicit TemplateMenuButton(FenrowStore &store, QWidget *parent = nullptr);

    // Builds the flow of the template with this id; a template whose shape
    // can't be read makes nothing.
    void createFrom(const QUuid &templateId);

signals:
    void flowCreated(const QUuid &flowId);

private:
    void followStore();
    void fillMenu();

    FenrowStore &m_store;
    QMenu *m_menu = nullptr;
};

} // namespace fenrow
